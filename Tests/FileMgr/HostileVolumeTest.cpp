/** @file
  Volumes that answer what they like, and pool that runs out: every answer
  gets a status, nothing is read past a buffer, and nothing is left allocated
  or open.
**/
#include "FileMgrTest.h"

#include <Guid/FileInfo.h>

namespace {

using HostileVolumeTest = FileMgrTest;

TEST_F (HostileVolumeTest, SuccessWithoutABufferOrWithSizeZeroIsNoDataAndTheSearchGoesOn)
{
  HostFirmwareVolume &NoBuffer = Platform ().Volumes ().AddFirmwareVolume ();
  HostFirmwareVolume &SizeZero = Platform ().Volumes ().AddFirmwareVolume ();
  HostFirmwareVolume &Good = Platform ().Volumes ().AddFirmwareVolume ();
  NoBuffer.FailNth (HostVolumeCall::ReadSection, EFI_SUCCESS);
  SizeZero.Answer (HostVolumeCall::ReadSection, HostFvAnswer{EFI_SUCCESS, true, 0, {}});
  Good.AddRawFile (mLogoGuid, Bytes ("good"));

  FileRead Read = ReadByGuid (mLogoGuid);
  EXPECT_EQ (Read.Status, EFI_SUCCESS);
  EXPECT_EQ (Read.Data, "good");
  EXPECT_EQ (NoBuffer.Count (HostVolumeCall::ReadFile), 0u) << "a successful section read is not followed by ReadFile";
  EXPECT_EQ (SizeZero.Count (HostVolumeCall::ReadFile), 0u);
}

TEST_F (HostileVolumeTest, NoDataFromAnyVolumeIsNotFoundAndTheCallersPointerIsKept)
{
  HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
  Volume.Answer (HostVolumeCall::ReadSection, HostFvAnswer{EFI_SUCCESS, false, 4096, {}});
  VOID *Buffer = nullptr;
  UINTN Size = 7;

  EXPECT_EQ (ReadFileDataFromFVByGuid (&mLogoGuid, &Buffer, &Size), EFI_NOT_FOUND);
  EXPECT_EQ (Buffer, nullptr);
  EXPECT_EQ (Size, 7u);
}

TEST_F (HostileVolumeTest, TheStatusOfTheLastFailedReadIsReturned)
{
  HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
  Volume.AddRawFile (mLogoGuid, Bytes ("data"));
  Volume.FailNth (HostVolumeCall::ReadFile, EFI_ACCESS_DENIED);

  EXPECT_EQ (ReadByGuid (mLogoGuid).Status, EFI_ACCESS_DENIED);
  EXPECT_EQ (ReadByGuid (mLogoGuid).Data, "data");
}

TEST_F (HostileVolumeTest, FileInformationThatCannotBeRightIsADeviceError)
{
  HostDiskVolume &Volume = Platform ().Volumes ().AddDiskVolume ();
  Volume.AddFile (u"File.bin", "data");

  Volume.ReportInfoSize (0);
  EXPECT_EQ (ReadFromDisk (u"File.bin").Status, EFI_DEVICE_ERROR);
  Volume.ReportInfoSize (SIZE_OF_EFI_FILE_INFO - 1);
  EXPECT_EQ (ReadFromDisk (u"File.bin").Status, EFI_DEVICE_ERROR);
  Volume.FailNth (HostVolumeCall::GetInfo, EFI_SUCCESS);
  EXPECT_EQ (ReadFromDisk (u"File.bin").Status, EFI_DEVICE_ERROR) << "success for an empty buffer";

  // The fixed part alone is enough: the name is not needed.
  Volume.ReportInfoSize (SIZE_OF_EFI_FILE_INFO);
  EXPECT_EQ (ReadFromDisk (u"File.bin").Data, "data");
  EXPECT_EQ (Volume.Count (HostVolumeCall::Read), 1u) << "no read before usable information";
}

TEST_F (HostileVolumeTest, AFileSizeThatCannotBeHeldIsOutOfResources)
{
  HostDiskVolume &Volume = Platform ().Volumes ().AddDiskVolume ();
  Volume.AddFile (u"Huge.bin", "data");

  for (UINT64 Size : {(UINT64)MAX_UINTN, (UINT64)MAX_UINTN - 1, (UINT64)MAX_UINTN - 2, (UINT64)1 << 40}) {
    Volume.ReportFileSize (Size);
    EXPECT_EQ (ReadFromDisk (u"Huge.bin").Status, EFI_OUT_OF_RESOURCES) << Size;
  }

  EXPECT_EQ (Volume.Count (HostVolumeCall::Read), 0u);
}

TEST_F (HostileVolumeTest, AReadThatFailsOrReportsMoreThanAskedGivesNoData)
{
  HostDiskVolume &Volume = Platform ().Volumes ().AddDiskVolume ();
  Volume.AddFile (u"File.bin", "data");

  Volume.FailNth (HostVolumeCall::Read, EFI_DEVICE_ERROR);
  FileRead Failed = ReadFromDisk (u"File.bin");
  EXPECT_EQ (Failed.Status, EFI_DEVICE_ERROR);
  EXPECT_FALSE (Failed.HasBuffer);

  Volume.ReportReadSize (5);
  FileRead TooMuch = ReadFromDisk (u"File.bin");
  EXPECT_EQ (TooMuch.Status, EFI_DEVICE_ERROR);
  EXPECT_FALSE (TooMuch.HasBuffer);

  Volume.ReportReadSize (2);
  EXPECT_EQ (ReadFromDisk (u"File.bin").Data, "da") << "a short read gives what was read";
}

TEST_F (HostileVolumeTest, AFailedCloseIsReportedWithoutData)
{
  HostDiskVolume &Volume = Platform ().Volumes ().AddDiskVolume ();
  Volume.AddFile (u"File.bin", "data");
  Volume.FailNth (HostVolumeCall::Close, EFI_DEVICE_ERROR, 2);

  FileRead Read = ReadFromDisk (u"File.bin");
  EXPECT_EQ (Read.Status, EFI_DEVICE_ERROR);
  EXPECT_FALSE (Read.HasBuffer);
}

TEST_F (HostileVolumeTest, AVolumeThatFailsOnTheWayIsPassedOver)
{
  HostDiskVolume &NoRoot = Platform ().Volumes ().AddDiskVolume ();
  HostDiskVolume &NullRoot = Platform ().Volumes ().AddDiskVolume ();
  HostDiskVolume &NullFile = Platform ().Volumes ().AddDiskVolume ();
  HostDiskVolume &Good = Platform ().Volumes ().AddDiskVolume ();
  NoRoot.FailNth (HostVolumeCall::OpenVolume, EFI_MEDIA_CHANGED);
  NullRoot.FailNth (HostVolumeCall::OpenVolume, EFI_SUCCESS);
  NullFile.AddFile (u"File.bin", "null file");
  NullFile.FailNth (HostVolumeCall::Open, EFI_SUCCESS);
  Good.AddFile (u"File.bin", "good");

  EXPECT_EQ (ReadByName (u"File.bin").Data, "good");
}

//
// Pool runs out at each allocation in turn of a load of the list and a read
// from each source: every call gives a failure or a right result, and nothing
// is left behind. (A failure may be invisible: a disk search that fails falls
// back to the firmware volume, a raw section that cannot be had to the whole
// file.)
//
TEST_F (HostileVolumeTest, OutOfPoolAtEachAllocationLeavesNothingBehind)
{
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"FileList.lst",
                                                   Line (mLogoGuidText, "Logo") + Line (mListGuidText, "L"));
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"Disk.txt", "disk");
  Platform ().Volumes ().AddFirmwareVolume ().AddFileWithRawSection (mLogoGuid, Bytes ("logo"));

  const std::string WholeLogo = std::string ("\x08\x00\x00\x19", 4) + "logo"; // with its section header
  UINTN Failed = 0;
  auto Run = [this, &WholeLogo, &Failed] () {
    EFI_STATUS ListStatus = InitFileList (&mListGuid);
    FileRead Disk = ReadByName (u"Disk.txt");
    FileRead Logo = ReadByName (u"Logo");
    EXPECT_TRUE (EFI_ERROR (Disk.Status) || (Disk.Data == "disk"));
    EXPECT_TRUE (EFI_ERROR (Logo.Status) || (Logo.Data == "logo") || (Logo.Data == WholeLogo)) << Logo.Data;
    EXPECT_TRUE ((ListStatus == EFI_SUCCESS) || (ListStatus == EFI_OUT_OF_RESOURCES) || (ListStatus == EFI_NOT_FOUND))
      << ListStatus;
    CleanupFileList ();
    EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);
    EXPECT_EQ (Platform ().Volumes ().OpenHandles (), 0u);
    Failed += (EFI_ERROR (ListStatus) || EFI_ERROR (Disk.Status) || EFI_ERROR (Logo.Status)) ? 1 : 0;
  };

  UINT64 Before = Platform ().Pool ().AllocationCount ();
  Run ();
  ASSERT_EQ (Failed, 0u);
  UINT64 Allocations = Platform ().Pool ().AllocationCount () - Before;
  ASSERT_GE (Allocations, 10u) << "handle buffers, list, copy, array, names, data";

  for (UINT64 Nth = 1; Nth <= Allocations; Nth++) {
    SCOPED_TRACE (Nth);
    Platform ().Pool ().FailAllocation (Nth);
    Run ();
    Platform ().Pool ().StopFailing ();
  }

  // Hidden: the disk search for "Logo" (it is not on disk anyway) and its raw section.
  EXPECT_EQ (Failed, Allocations - 2);
}

} // namespace
