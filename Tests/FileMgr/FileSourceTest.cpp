/** @file
  Where a file comes from: disk volumes before firmware volumes, the raw
  section before the whole file, and the buffers handed to the caller.
**/
#include "FileMgrTest.h"

#include <Library/TrackedAllocationLib.h>

#define TRACKED_POOL_FILE "Tests/FileMgr/FileSourceTest"

namespace {

using FileSourceTest = FileMgrTest;

TEST_F (FileSourceTest, DiskCopyWinsOverTheFirmwareCopyAndEndsWithTwoZeroBytes)
{
  Platform ().Volumes ().AddFirmwareVolume ().AddFileWithRawSection (mListGuid,
                                                                     Bytes (Line (mLogoGuidText, "Logo.bmp")));
  HostFirmwareVolume &LogoVolume = Platform ().Volumes ().AddFirmwareVolume ();
  LogoVolume.AddFileWithRawSection (mLogoGuid, Bytes ("firmware logo"));
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"Logo.bmp", "disk logo");
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  VOID *Buffer = nullptr;
  UINTN Size = 0;
  ASSERT_EQ (GetFileData (WideName (u"Logo.bmp"), &Buffer, &Size), EFI_SUCCESS);
  ASSERT_EQ (Size, 9u);
  const HostPoolBuffer *Record = Platform ().Pool ().Find (Buffer);
  ASSERT_NE (Record, nullptr);
  EXPECT_EQ (Record->Size, 11u) << "the data and two zero bytes";
  EXPECT_EQ (std::string ((const char *)Buffer, 11), std::string ("disk logo\0\0", 11));
  FREE_TRACKED_POOL (Buffer);

  EXPECT_TRUE (LogoVolume.Reads ().empty ()) << "the firmware copy was not read";
  EXPECT_EQ (ReadByGuid (mLogoGuid).Data, "firmware logo") << "and it is there";
}

TEST_F (FileSourceTest, AnEmptyDiskFileStillWins)
{
  Platform ()
    .Volumes ()
    .AddFirmwareVolume ()
    .AddFileWithRawSection (mListGuid, Bytes (Line (mLogoGuidText, "Logo.bmp")))
    .AddFileWithRawSection (mLogoGuid, Bytes ("firmware logo"));
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"logo.BMP", std::string ());
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  VOID *Buffer = nullptr;
  UINTN Size = 99;
  ASSERT_EQ (GetFileData (WideName (u"Logo.bmp"), &Buffer, &Size), EFI_SUCCESS);
  EXPECT_EQ (Size, 0u);
  ASSERT_NE (Buffer, nullptr);
  EXPECT_EQ (Platform ().Pool ().Find (Buffer)->Size, 2u);
  EXPECT_EQ (((const UINT8 *)Buffer)[0], 0);
  EXPECT_EQ (((const UINT8 *)Buffer)[1], 0);
  FREE_TRACKED_POOL (Buffer);
}

TEST_F (FileSourceTest, TheFirstDiskVolumeThatHasTheFileGivesItAndEveryHandleIsClosed)
{
  HostDiskVolume &Empty = Platform ().Volumes ().AddDiskVolume ();
  HostDiskVolume &First = Platform ().Volumes ().AddDiskVolume ();
  HostDiskVolume &Second = Platform ().Volumes ().AddDiskVolume ();
  First.AddFile (u"Splash.txt", "first");
  Second.AddFile (u"Splash.txt", "second");

  FileRead Read = ReadByName (u"Splash.txt");
  EXPECT_EQ (Read.Status, EFI_SUCCESS);
  EXPECT_EQ (Read.Data, "first");
  EXPECT_EQ (Second.Count (HostVolumeCall::OpenVolume), 0u) << "the search ends at the first volume with the file";

  ASSERT_EQ (Empty.Opens ().size (), 1u);
  EXPECT_EQ (Empty.Opens ()[0].Status, EFI_NOT_FOUND);
  ASSERT_EQ (First.Opens ().size (), 1u);
  EXPECT_EQ (First.Opens ()[0].Name, u"Splash.txt");
  EXPECT_EQ (First.Opens ()[0].OpenMode, EFI_FILE_MODE_READ);
  EXPECT_EQ (First.Opens ()[0].Attributes, 0x37u);
  EXPECT_EQ (First.Count (HostVolumeCall::Close), 2u) << "the root and the file";
}

TEST_F (FileSourceTest, TheRawSectionIsPreferredAndAFileWithoutOneIsReturnedWhole)
{
  HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
  Volume.AddFileWithRawSection (mLogoGuid, Bytes ("section data"));
  Volume.AddRawFile (mListGuid, Bytes ("whole file"));

  FileRead Section = ReadByGuid (mLogoGuid);
  EXPECT_EQ (Section.Status, EFI_SUCCESS);
  EXPECT_EQ (Section.Data, "section data") << "not the section header in front of it";

  FileRead Whole = ReadByGuid (mListGuid);
  EXPECT_EQ (Whole.Status, EFI_SUCCESS);
  EXPECT_EQ (Whole.Data, "whole file");

  ASSERT_EQ (Volume.Reads ().size (), 3u);
  EXPECT_EQ (Volume.Reads ()[0].Call, HostVolumeCall::ReadSection);
  EXPECT_EQ (Volume.Reads ()[0].SectionType, EFI_SECTION_RAW);
  EXPECT_EQ (Volume.Reads ()[0].SectionInstance, 0u);
  EXPECT_TRUE (Volume.Reads ()[0].BufferWasNull) << "the volume allocates the data";
  EXPECT_EQ (Volume.Reads ()[1].Call, HostVolumeCall::ReadSection);
  EXPECT_EQ (Volume.Reads ()[2].Call, HostVolumeCall::ReadFile);
  EXPECT_TRUE (Volume.Reads ()[2].BufferWasNull);
}

TEST_F (FileSourceTest, FirmwareVolumesAreSearchedInHandleOrder)
{
  HostFirmwareVolume &Without = Platform ().Volumes ().AddFirmwareVolume ();
  HostFirmwareVolume &First = Platform ().Volumes ().AddFirmwareVolume ();
  HostFirmwareVolume &Second = Platform ().Volumes ().AddFirmwareVolume ();
  First.AddRawFile (mLogoGuid, Bytes ("first"));
  Second.AddRawFile (mLogoGuid, Bytes ("second"));

  EXPECT_EQ (ReadByGuid (mLogoGuid).Data, "first");
  EXPECT_EQ (Without.Reads ().size (), 2u) << "section, then whole file";
  EXPECT_TRUE (Second.Reads ().empty ());
}

TEST_F (FileSourceTest, AFileNoVolumeHasLeavesTheCallersBufferAndSizeAlone)
{
  Platform ().Volumes ().AddFirmwareVolume ().AddRawFile (mListGuid, Bytes ("x"));
  VOID *Buffer = (VOID *)&Buffer;
  UINTN Size = 1234;

  EXPECT_EQ (ReadFileDataFromFVByGuid (&mLogoGuid, &Buffer, &Size), EFI_NOT_FOUND);
  EXPECT_EQ (Buffer, (VOID *)&Buffer);
  EXPECT_EQ (Size, 1234u);
  EXPECT_EQ (ReadFileDataFromFS (WideName (u"Logo.bmp"), &Buffer, &Size), EFI_NOT_FOUND);
  EXPECT_EQ (Buffer, (VOID *)&Buffer);
  EXPECT_EQ (Size, 1234u);
}

TEST_F (FileSourceTest, NoVolumesAtAllIsNotFound)
{
  EXPECT_EQ (ReadByName (u"Logo.bmp").Status, EFI_NOT_FOUND);
  EXPECT_EQ (ReadByGuid (mLogoGuid).Status, EFI_NOT_FOUND);
  EXPECT_EQ (InitFileList (&mListGuid), EFI_NOT_FOUND);
}

TEST_F (FileSourceTest, GetFileDataReleasesTheCallersOldBufferEvenWhenTheReadFails)
{
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"Present.txt", "present");
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  ASSERT_EQ (ALLOCATE_TRACKED_POOL (Buffer, 16), EFI_SUCCESS);
  VOID *Old = Buffer;
  EXPECT_EQ (GetFileData (WideName (u"Missing.txt"), &Buffer, &Size), EFI_NOT_FOUND);
  EXPECT_EQ (Buffer, nullptr);
  EXPECT_EQ (Platform ().Pool ().Find (Old), nullptr);

  ASSERT_EQ (GetFileData (WideName (u"Present.txt"), &Buffer, &Size), EFI_SUCCESS);
  Old = Buffer;
  ASSERT_EQ (GetFileData (WideName (u"Present.txt"), &Buffer, &Size), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().Find (Old), nullptr) << "the first read's buffer was released by the second";
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 1u);
  FREE_TRACKED_POOL (Buffer);
}

TEST_F (FileSourceTest, NullArgumentsAreRefused)
{
  VOID *Buffer = nullptr;
  UINTN Size = 0;

  EXPECT_EQ (GetFileData (WideName (u"a"), nullptr, &Size), EFI_INVALID_PARAMETER);
  EXPECT_EQ (GetFileData (nullptr, &Buffer, &Size), EFI_INVALID_PARAMETER);
  EXPECT_EQ (GetFileData (WideName (u"a"), &Buffer, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (ReadFileDataFromFS (nullptr, &Buffer, &Size), EFI_INVALID_PARAMETER);
  EXPECT_EQ (ReadFileDataFromFVByGuid (nullptr, &Buffer, &Size), EFI_INVALID_PARAMETER);
  EXPECT_EQ (InitFileList (nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::LocateHandleBuffer), 0u);
}

} // namespace
