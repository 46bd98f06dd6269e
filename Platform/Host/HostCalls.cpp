/** @file
  Call counts, TPL limits and injected failures of the simulated services.
**/
#include "HostCalls.h"

#include <string>

#include "HostGuid.h"
#include "HostPlatform.h"

namespace {

struct SERVICE_INFO {
  const char *Name;
  EFI_TPL TplLimit; ///< the highest TPL UEFI allows the caller
  bool CanFail;     ///< returns an EFI_STATUS, so a failure can be injected
};

//
// In HostService order. The limits are those of UEFI's table of TPL
// restrictions.
//
constexpr SERVICE_INFO mServices[] = {
  {"RaiseTPL", TPL_HIGH_LEVEL, false},
  {"RestoreTPL", TPL_HIGH_LEVEL, false},
  {"AllocatePool", TPL_NOTIFY, true},
  {"FreePool", TPL_NOTIFY, true},
  {"CreateEvent", TPL_NOTIFY, true},
  {"CreateEventEx", TPL_NOTIFY, true},
  {"SignalEvent", TPL_HIGH_LEVEL, true},
  {"CloseEvent", TPL_NOTIFY, true},
  {"CheckEvent", TPL_NOTIFY, true},
  {"InstallProtocolInterface", TPL_NOTIFY, true},
  {"ReinstallProtocolInterface", TPL_NOTIFY, true},
  {"UninstallProtocolInterface", TPL_NOTIFY, true},
  {"HandleProtocol", TPL_NOTIFY, true},
  {"OpenProtocol", TPL_NOTIFY, true},
  {"ProtocolsPerHandle", TPL_NOTIFY, true},
  {"RegisterProtocolNotify", TPL_NOTIFY, true},
  {"LocateHandle", TPL_NOTIFY, true},
  {"LocateHandleBuffer", TPL_NOTIFY, true},
  {"LocateProtocol", TPL_NOTIFY, true},
  {"InstallMultipleProtocolInterfaces", TPL_NOTIFY, true},
  {"UninstallMultipleProtocolInterfaces", TPL_NOTIFY, true},
  {"InstallConfigurationTable", TPL_NOTIFY, true},
  {"UnloadImage", TPL_CALLBACK, true},
  {"DisconnectController", TPL_CALLBACK, true},
  {"Stall", TPL_HIGH_LEVEL, true},
  {"GetNextMonotonicCount", TPL_HIGH_LEVEL, true},
  {"CalculateCrc32", TPL_HIGH_LEVEL, true},
  {"CopyMem", TPL_HIGH_LEVEL, false},
  {"SetMem", TPL_HIGH_LEVEL, false},
  {"GetTime", TPL_CALLBACK, true},
  {"GetVariable", TPL_CALLBACK, true},
  {"SetVariable", TPL_CALLBACK, true},
  {"ResetSystem", TPL_HIGH_LEVEL, false},
  {"ConIn.Reset", TPL_NOTIFY, true},
  {"ReadKeyStroke", TPL_NOTIFY, true},
  {"ReadKeyStrokeEx", TPL_NOTIFY, true},
  {"SetState", TPL_NOTIFY, true},
  {"RegisterKeyNotify", TPL_NOTIFY, true},
  {"UnregisterKeyNotify", TPL_NOTIFY, true},
  {"ConOut.Reset", TPL_NOTIFY, true},
  {"OutputString", TPL_NOTIFY, true},
  {"TestString", TPL_NOTIFY, true},
  {"QueryMode", TPL_NOTIFY, true},
  {"SetMode", TPL_NOTIFY, true},
  {"SetAttribute", TPL_NOTIFY, true},
  {"ClearScreen", TPL_NOTIFY, true},
  {"SetCursorPosition", TPL_NOTIFY, true},
  {"EnableCursor", TPL_NOTIFY, true},
};

static_assert (ARRAY_SIZE (mServices) == (size_t)HostService::Count, "one entry per service");

const SERVICE_INFO &
Info (HostService Service)
{
  return mServices[(size_t)Service];
}

} // namespace

const char *
HostServiceName (HostService Service)
{
  return Info (Service).Name;
}

UINT64
HostCalls::Count (HostService Service) const
{
  return mCounts[(size_t)Service];
}

VOID
HostCalls::AddFailure (HostService Service, EFI_STATUS Status, UINT64 Skip, bool Once, const EFI_GUID *Guid)
{
  if (!Info (Service).CanFail) {
    mPlatform.RecordError (std::string ("test fault: ") + Info (Service).Name + " cannot fail");
    return;
  }

  Failure Added = {Service, Status, Guid != nullptr, {}, Skip, Once};
  if (Guid != nullptr) {
    Added.Guid = *Guid;
  }

  mFailures.push_back (Added);
}

VOID
HostCalls::FailNth (HostService Service, EFI_STATUS Status, UINT64 Nth, const EFI_GUID *Guid)
{
  if (Nth == 0) {
    mPlatform.RecordError ("test fault: FailNth counts calls from 1");
    return;
  }

  AddFailure (Service, Status, Nth - 1, true, Guid);
}

VOID
HostCalls::FailAllAfter (HostService Service, EFI_STATUS Status, UINT64 Successes, const EFI_GUID *Guid)
{
  AddFailure (Service, Status, Successes, false, Guid);
}

VOID
HostCalls::StopFailing (HostService Service)
{
  std::vector<Failure> Kept;

  for (const Failure &Entry : mFailures) {
    if (Entry.Service != Service) {
      Kept.push_back (Entry);
    }
  }

  mFailures.swap (Kept);
}

std::optional<EFI_STATUS>
HostCalls::Enter (HostService Service, const EFI_GUID *Guid)
{
  mCounts[(size_t)Service]++;

  EFI_TPL Tpl = mPlatform.Events ().CurrentTpl ();
  if (Tpl > Info (Service).TplLimit) {
    mPlatform.RecordError (std::string (Info (Service).Name) + " called at TPL " + std::to_string (Tpl) +
                           ", above its limit " + std::to_string (Info (Service).TplLimit));
  }

  //
  // Every matching failure counts this call; the first one that is due decides it.
  //
  std::optional<EFI_STATUS> Result;
  for (auto Entry = mFailures.begin (); Entry != mFailures.end ();) {
    bool Matches =
      (Entry->Service == Service) && (!Entry->HasGuid || ((Guid != nullptr) && HostGuidEqual (Entry->Guid, *Guid)));
    if (!Matches) {
      ++Entry;
      continue;
    }

    if (Entry->Skip > 0) {
      Entry->Skip--;
      ++Entry;
      continue;
    }

    if (!Result.has_value ()) {
      Result = Entry->Status;
    }

    if (Entry->Once) {
      Entry = mFailures.erase (Entry);
    } else {
      ++Entry;
    }
  }

  return Result;
}
