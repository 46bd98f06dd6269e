/** @file
  Fuzz target: firmware volumes that answer ReadSection and ReadFile with
  statuses, sizes and data that the input chooses (success without a buffer
  too), some with real files, some whose protocol cannot be had, with pool that
  may run out. ReadFileDataFromFVByGuid (or InitFileList, which reads the list
  from a firmware volume when no disk has one) must hand out data only with a
  success, leave the caller's pointer alone otherwise, and leave nothing
  behind.
**/
#include <cstdint>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include <Library/CompileTimeLib.h>
#include <Library/FileMgrLib.h>
#include <Library/TrackedAllocationLib.h>

#include "FuzzChecks.h"
#include "HostPlatform.h"

#define TRACKED_POOL_FILE "Tests/Fuzz/FirmwareVolumeFuzz"

namespace {

constexpr EFI_GUID mFileGuid = CompileTime::GuidFromText ("EB3001D5-F827-4938-95E2-5C8F644B966F");
constexpr UINTN mMaxBufferSize = 4096;

constexpr EFI_STATUS mStatuses[] = {EFI_SUCCESS,           EFI_NOT_FOUND,        EFI_ACCESS_DENIED,
                                    EFI_OUT_OF_RESOURCES,  EFI_DEVICE_ERROR,     EFI_WARN_BUFFER_TOO_SMALL,
                                    EFI_INVALID_PARAMETER, EFI_VOLUME_CORRUPTED, EFI_BUFFER_TOO_SMALL};

EFI_STATUS
PickStatus (FuzzedDataProvider &Input)
{
  if (Input.ConsumeBool ()) {
    return Input.ConsumeIntegral<UINT64> ();
  }

  return Input.PickValueInArray (mStatuses);
}

HostFvAnswer
PickAnswer (FuzzedDataProvider &Input)
{
  HostFvAnswer Answer;

  Answer.Status = PickStatus (Input);
  Answer.GiveBuffer = Input.ConsumeBool ();
  //
  // A buffer that is given holds Size bytes; a size without a buffer may be anything.
  //
  Answer.Size =
    Answer.GiveBuffer ? Input.ConsumeIntegralInRange<UINTN> (0, mMaxBufferSize) : Input.ConsumeIntegral<UINTN> ();
  Answer.Data = Input.ConsumeBytes<UINT8> (Input.ConsumeIntegralInRange<size_t> (0, 64));
  return Answer;
}

void
BuildVolume (FuzzedDataProvider &Input, HostFirmwareVolume &Volume)
{
  switch (Input.ConsumeIntegralInRange<int> (0, 2)) {
    case 1:
      Volume.AddRawFile (mFileGuid, Input.ConsumeBytes<UINT8> (Input.ConsumeIntegralInRange<size_t> (0, 128)));
      break;
    case 2:
      Volume.AddFileWithRawSection (mFileGuid,
                                    Input.ConsumeBytes<UINT8> (Input.ConsumeIntegralInRange<size_t> (0, 128)));
      break;
    default:
      break;
  }

  for (int Count = Input.ConsumeIntegralInRange<int> (0, 2); Count > 0; Count--) {
    Volume.Answer (HostVolumeCall::ReadSection, PickAnswer (Input));
  }

  for (int Count = Input.ConsumeIntegralInRange<int> (0, 2); Count > 0; Count--) {
    Volume.Answer (HostVolumeCall::ReadFile, PickAnswer (Input));
  }
}

void
ReadByGuid (HostPlatform &Platform)
{
  UINT8 Sentinel = 0;
  VOID *Buffer = &Sentinel;
  UINTN Size = 0x5A5A;

  EFI_STATUS Status = ReadFileDataFromFVByGuid (&mFileGuid, &Buffer, &Size);
  if (EFI_ERROR (Status)) {
    FuzzCheck ((Buffer == &Sentinel) && (Size == 0x5A5A), "a failure changed the caller's buffer or size");
    return;
  }

  FuzzCheck ((Buffer != &Sentinel) && (Buffer != nullptr) && (Size > 0), "a success without data");
  const HostPoolBuffer *Record = Platform.Pool ().Find (Buffer);
  FuzzCheck ((Record != nullptr) && (Record->Size >= Size), "the data is not a pool buffer of its size");

  //
  // Every byte handed out must be readable (AddressSanitizer watches).
  //
  UINT8 Sum = 0;
  for (UINTN Index = 0; Index < Size; Index++) {
    Sum ^= ((const UINT8 *)Buffer)[Index];
  }

  (void)Sum;
  FREE_TRACKED_POOL (Buffer);
}

} // namespace

extern "C" int
LLVMFuzzerTestOneInput (const uint8_t *Data, size_t Size)
{
  FuzzedDataProvider Input (Data, Size);
  HostPlatform Platform;

  for (int Count = Input.ConsumeIntegralInRange<int> (0, 4); Count > 0; Count--) {
    BuildVolume (Input, Platform.Volumes ().AddFirmwareVolume ());
  }

  if (Input.ConsumeBool ()) {
    Platform.Calls ().FailNth (HostService::HandleProtocol, PickStatus (Input),
                               Input.ConsumeIntegralInRange<UINT64> (1, 4), &gEfiFirmwareVolume2ProtocolGuid);
  }

  if (Input.ConsumeBool ()) {
    Platform.Pool ().FailAllocation (Input.ConsumeIntegralInRange<UINT64> (1, 8));
  }

  if (Input.ConsumeBool ()) {
    ReadByGuid (Platform);
  } else {
    EFI_STATUS Status = InitFileList (&mFileGuid);
    FuzzCheck ((Status != EFI_SUCCESS) || (Platform.Pool ().LiveCount () > 0), "a list loaded without entries");
    CleanupFileList ();
  }

  Platform.Pool ().StopFailing ();
  FuzzCheckClean (Platform);
  return 0;
}
