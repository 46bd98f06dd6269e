/** @file
  Fuzz target: any bytes as "FileList.lst" on a disk volume. The list is
  loaded, looked up with a few names (some taken from the input), loaded again
  and released; no pool buffer and no open file may be left.
**/
#include <cstdint>
#include <string>
#include <vector>

#include <Library/CompileTimeLib.h>
#include <Library/FileMgrLib.h>
#include <Library/TrackedAllocationLib.h>

#include "FuzzChecks.h"
#include "HostPlatform.h"

#define TRACKED_POOL_FILE "Tests/Fuzz/FileListFuzz"

namespace {

constexpr EFI_GUID mListGuid = CompileTime::GuidFromText ("6F1C2E4A-9B3D-4E8F-A1B2-C3D4E5F60718");
constexpr EFI_GUID mKnownGuid = CompileTime::GuidFromText ("11111111-2222-3333-4444-555555555555");

/** Looks Name up and releases what comes back; a success must come with data. **/
void
Lookup (const std::vector<CHAR16> &Name)
{
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  EFI_STATUS Status = GetFileData (Name.data (), &Buffer, &Size);
  if (!EFI_ERROR (Status)) {
    FuzzCheck (Buffer != nullptr, "success without a buffer");
  } else {
    FuzzCheck (Buffer == nullptr, "a failure with a buffer");
  }

  FREE_TRACKED_POOL (Buffer);
}

/** @return a name made of up to 12 bytes of the input from Offset on. **/
std::vector<CHAR16>
NameFromInput (const uint8_t *Data, size_t Size, size_t Offset)
{
  std::vector<CHAR16> Name;

  for (size_t Index = Offset; (Index < Size) && (Index < Offset + 12) && (Data[Index] != 0); Index++) {
    Name.push_back (Data[Index]);
  }

  Name.push_back (0);
  return Name;
}

} // namespace

extern "C" int
LLVMFuzzerTestOneInput (const uint8_t *Data, size_t Size)
{
  HostPlatform Platform;

  Platform.Volumes ().AddDiskVolume ().AddFile (u"FileList.lst", std::vector<UINT8> (Data, Data + Size));
  Platform.Volumes ().AddFirmwareVolume ().AddRawFile (mKnownGuid, {'k', 'n', 'o', 'w', 'n'});

  EFI_STATUS Status = InitFileList (&mListGuid);
  if (Size < 37) {
    FuzzCheck (Status == EFI_NOT_FOUND, "a list without a whole entry was loaded");
  }

  Lookup ({0});
  Lookup ({'L', 'o', 'g', 'o', '.', 'b', 'm', 'p', 0});
  Lookup (NameFromInput (Data, Size, 37));
  Lookup (NameFromInput (Data, Size, Size / 2));

  if (Status == EFI_SUCCESS) {
    FuzzCheck (InitFileList (&mListGuid) == EFI_NOT_FOUND, "a loaded list was loaded again");
  }

  CleanupFileList ();
  CleanupFileList ();
  FuzzCheckClean (Platform);
  return 0;
}
