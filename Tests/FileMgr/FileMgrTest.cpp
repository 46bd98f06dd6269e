/** @file
  Helpers of the file manager tests.
**/
#include "FileMgrTest.h"

#include <cstdio>

#include <Library/CompileTimeLib.h>
#include <Library/TrackedAllocationLib.h>

#define TRACKED_POOL_FILE "Tests/FileMgr/FileMgrTest"

void
FileMgrTest::TearDown ()
{
  CleanupFileList ();
  EXPECT_EQ (Platform ().Volumes ().OpenHandles (), 0u) << "a file or root handle was left open";
  PlatformTest::TearDown ();
}

EFI_GUID
FileMgrTest::Guid (const std::string &Text)
{
  CHAR8 Chars[37] = {};

  EXPECT_EQ (Text.size (), 36u);
  Text.copy (Chars, 36);
  return CompileTime::GuidFromText (Chars);
}

std::vector<UINT8>
FileMgrTest::Bytes (const std::string &Text)
{
  return std::vector<UINT8> (Text.begin (), Text.end ());
}

std::string
FileMgrTest::Line (const std::string &GuidText, const std::string &Name)
{
  return GuidText + " " + Name + "\r\n";
}

std::string
FileMgrTest::NumberedGuidText (UINTN Index)
{
  char Text[40];

  std::snprintf (Text, sizeof (Text), "%08X-0000-4000-8000-0000000000AB", (unsigned)Index);
  return Text;
}

FileRead
FileMgrTest::Take (EFI_STATUS Status, VOID *&Buffer, UINTN Size)
{
  FileRead Read{Status, "", Size, Buffer != nullptr};

  if ((Buffer != nullptr) && !EFI_ERROR (Status)) {
    Read.Data.assign ((const char *)Buffer, Size);
  }

  FREE_TRACKED_POOL (Buffer);
  return Read;
}

FileRead
FileMgrTest::ReadByName (const std::u16string &Name)
{
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  EFI_STATUS Status = GetFileData (WideName (Name), &Buffer, &Size);
  return Take (Status, Buffer, Size);
}

FileRead
FileMgrTest::ReadFromDisk (const std::u16string &Name)
{
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  EFI_STATUS Status = ReadFileDataFromFS (WideName (Name), &Buffer, &Size);
  return Take (Status, Buffer, Size);
}

FileRead
FileMgrTest::ReadByGuid (const EFI_GUID &FileGuid)
{
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  EFI_STATUS Status = ReadFileDataFromFVByGuid (&FileGuid, &Buffer, &Size);
  return Take (Status, Buffer, Size);
}
