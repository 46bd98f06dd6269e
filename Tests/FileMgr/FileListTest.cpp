/** @file
  The file list: loading it, looking names up, releasing and loading again.
  A name is found through the list when the firmware volume's file of the
  entry's GUID comes back; each test file holds its own GUID's text.
**/
#include "FileMgrTest.h"

namespace {

class FileListTest : public FileMgrTest {
protected:
  /** Puts List on a disk volume and one firmware file per GUID of Guids, holding that GUID's text. **/
  VOID
  Prepare (const std::string &List, const std::vector<std::string> &Guids)
  {
    Platform ().Volumes ().AddDiskVolume ().AddFile (u"FileList.lst", List);
    HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
    for (const std::string &Text : Guids) {
      Volume.AddFileWithRawSection (Guid (Text), Bytes (Text));
    }
  }

  /** @return the GUID text of the file that Name was found as, or the failure's text. **/
  std::string
  Lookup (const std::u16string &Name)
  {
    FileRead Read = ReadByName (Name);
    return EFI_ERROR (Read.Status) ? "status " + std::to_string (Read.Status & 0xFF) : Read.Data;
  }

  const std::string mA = "11111111-2222-3333-4444-555555555555";
  const std::string mB = "aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee";
  const std::string mC = "0C0C0C0C-0D0D-0E0E-0F0F-101010101010";
  const std::string mNotFound = "status 14";
};

TEST_F (FileListTest, NamesIgnoreTheCaseOfAToZOnly)
{
  Prepare (Line (mA, "Logo.BMP") + Line (mB, "\xC9t\xC9.txt"), {mA, mB});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"logo.bmp"), mA);
  EXPECT_EQ (Lookup (u"LOGO.BMP"), mA);
  EXPECT_EQ (Lookup (u"\u00C9t\u00C9.txt"), mB) << "8-bit names are widened as Latin-1";
  EXPECT_EQ (Lookup (u"\u00E9t\u00E9.txt"), mNotFound) << "no folding beyond A to Z";
}

TEST_F (FileListTest, ANameMatchesAListedNameThatItBeginsAndConversely)
{
  Prepare (Line (mA, "Logo.bmp") + Line (mB, "Splash"), {mA, mB});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"logo"), mA);
  EXPECT_EQ (Lookup (u"Splash.bmp"), mB);
  EXPECT_EQ (Lookup (u"Logx"), mNotFound);
}

TEST_F (FileListTest, TheFirstMatchingEntryInFileOrderWins)
{
  Prepare (Line (mB, "Logo.bmp") + Line (mA, "Logo") + Line (mC, "logo.bmp"), {mA, mB, mC});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"LOGO"), mB);
  EXPECT_EQ (Lookup (u"Logo.bmp.old"), mB);
}

TEST_F (FileListTest, TheGuidTextTakesEitherCaseAndAnySeparators)
{
  // Fields are read at fixed places; the characters between them do not matter.
  std::string Mixed = "AaAaAaAa_bBbB_cccc_DDdd_eEeEeEeEeEeE";
  Prepare (Mixed + "|Mixed.bin", {"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee"});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"Mixed.bin"), mB);
}

TEST_F (FileListTest, ALastLineWithoutCarriageReturnIsStillAnEntry)
{
  Prepare (Line (mA, "First") + mB + " Last", {mA, mB});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"First"), mA);
  EXPECT_EQ (Lookup (u"Last"), mB);
  EXPECT_EQ (Lookup (u"Lust"), mNotFound);
}

TEST_F (FileListTest, TheListComesFromTheFirmwareVolumeWhenNoDiskHasOne)
{
  HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
  Volume.AddRawFile (mListGuid, Bytes (Line (mA, "FromFirmware")));
  Volume.AddRawFile (Guid (mA), Bytes ("data"));
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"Other.lst", Line (mB, "FromDisk"));

  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Lookup (u"FromFirmware"), "data");
}

TEST_F (FileListTest, ADiskListTakesThePlaceOfTheFirmwareList)
{
  Prepare (Line (mA, "FromDisk"), {mA});
  Platform ().Volumes ().AddFirmwareVolume ().AddRawFile (mListGuid, Bytes (Line (mB, "FromFirmware")));

  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Lookup (u"FromDisk"), mA);
  EXPECT_EQ (Lookup (u"FromFirmware"), mNotFound);
}

TEST_F (FileListTest, NoListMeansNoNameIsFoundInFirmwareVolumes)
{
  Platform ().Volumes ().AddFirmwareVolume ().AddRawFile (Guid (mA), Bytes ("data"));

  EXPECT_EQ (Lookup (u"Anything"), mNotFound);
  EXPECT_EQ (InitFileList (&mListGuid), EFI_NOT_FOUND);
  EXPECT_EQ (Lookup (u"Anything"), mNotFound);
}

TEST_F (FileListTest, ALoadedListIsKeptWhenLoadedAgain)
{
  Prepare (Line (mA, "Name"), {mA, mB});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  UINTN Live = Platform ().Pool ().LiveCount ();

  Platform ().Volumes ().AddDiskVolume ().AddFile (u"FileList.lst", Line (mB, "Name"));
  EXPECT_EQ (InitFileList (&mListGuid), EFI_NOT_FOUND);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Live) << "nothing read, nothing made";
  EXPECT_EQ (Lookup (u"Name"), mA);
}

TEST_F (FileListTest, CleanupTwiceIsHarmlessAndTheListLoadsAgain)
{
  Prepare (Line (mA, "One") + Line (mB, "Two"), {mA, mB});
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 3u) << "the array and two names";

  CleanupFileList ();
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);
  EXPECT_EQ (Lookup (u"One"), mNotFound);
  CleanupFileList ();
  EXPECT_TRUE (Platform ().Errors ().empty ()) << "no second release";

  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Lookup (u"Two"), mB);
}

TEST_F (FileListTest, TheListNamesOnlyFirmwareFilesNotDiskFiles)
{
  // A listed name that is on disk too comes from the disk.
  Prepare (Line (mA, "Both.bin"), {mA});
  Platform ().Volumes ().AddDiskVolume ().AddFile (u"Both.bin", "disk");
  ASSERT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);

  EXPECT_EQ (Lookup (u"Both.bin"), "disk");
}

} // namespace
