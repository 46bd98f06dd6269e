/** @file
  The host platform's tables, the UEFI globals and the record of faults.
**/
#include "HostPlatform.h"

#include <cstdio>
#include <cstdlib>

#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include "HostGuid.h"
#include "HostPlatformInternal.h"

namespace {

constexpr auto mFirmwareVendor = CompileTime::MakeWideString (u"KestUi host platform");
constexpr UINT32 mFirmwareRevision = 0x00010000;

template <typename TABLE>
VOID
SealTable (TABLE &Table, UINT64 Signature, UINT32 Revision)
{
  Table.Hdr.Signature = Signature;
  Table.Hdr.Revision = Revision;
  Table.Hdr.HeaderSize = sizeof (TABLE);
  Table.Hdr.CRC32 = 0;
  Table.Hdr.Reserved = 0;
  Table.Hdr.CRC32 = HostCrc32 (&Table, sizeof (TABLE));
}

} // namespace

HostPlatform *HostPlatform::mCurrent = nullptr;

HostPlatform::HostPlatform (const HostPlatformOptions &Options)
    : mCalls (*this), mPool (*this), mEvents (*this), mHandles (*this), mConfigTables (*this), mImages (*this),
      mConsole (*this)
{
  if (mCurrent != nullptr) {
    std::fprintf (stderr, "HostPlatform: a second platform while one exists\n");
    std::abort ();
  }

  mCurrent = this;

  HostPublishUnexpectedServices (mBootServices, mRuntimeServices);
  HostPublishMemoryServices (mBootServices);
  mPool.Publish (mBootServices);
  mEvents.Publish (mBootServices);
  mHandles.Publish (mBootServices);
  mConfigTables.Publish (mBootServices);
  mImages.Publish (mBootServices);
  mClock.Publish (mBootServices, mRuntimeServices);
  mVariables.Publish (mRuntimeServices);
  mReset.Publish (mRuntimeServices);
  SealTable (mBootServices, EFI_BOOT_SERVICES_SIGNATURE, EFI_BOOT_SERVICES_REVISION);
  SealTable (mRuntimeServices, EFI_RUNTIME_SERVICES_SIGNATURE, EFI_RUNTIME_SERVICES_REVISION);

  mSystemTable.FirmwareVendor = const_cast<CHAR16 *> (mFirmwareVendor.Text);
  mSystemTable.FirmwareRevision = mFirmwareRevision;
  mSystemTable.BootServices = &mBootServices;
  mSystemTable.RuntimeServices = &mRuntimeServices;
  gST = &mSystemTable;
  gBS = &mBootServices;
  gRT = &mRuntimeServices;

  mConsole.Install (mSystemTable, Options.ConInEx);
  UpdateSystemTableCrc ();
}

HostPlatform::~HostPlatform ()
{
  gST = nullptr;
  gBS = nullptr;
  gRT = nullptr;
  gImageHandle = nullptr;
  mCurrent = nullptr;
}

HostPlatform &
HostPlatform::Current ()
{
  if (mCurrent == nullptr) {
    std::fprintf (stderr, "HostPlatform: a UEFI service was called with no platform\n");
    std::abort ();
  }

  return *mCurrent;
}

std::vector<std::string>
HostPlatform::TakeErrors ()
{
  std::vector<std::string> Taken;

  Taken.swap (mErrors);
  return Taken;
}

VOID
HostPlatform::RecordError (const std::string &Message)
{
  mErrors.push_back (Message);
}

VOID
HostPlatform::UpdateSystemTableCrc ()
{
  SealTable (mSystemTable, EFI_SYSTEM_TABLE_SIGNATURE, EFI_SYSTEM_TABLE_REVISION);
}

std::string
HostGuidText (const EFI_GUID &Guid)
{
  char Text[40];

  std::snprintf (Text, sizeof (Text), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", Guid.Data1, Guid.Data2,
                 Guid.Data3, Guid.Data4[0], Guid.Data4[1], Guid.Data4[2], Guid.Data4[3], Guid.Data4[4], Guid.Data4[5],
                 Guid.Data4[6], Guid.Data4[7]);
  return Text;
}
