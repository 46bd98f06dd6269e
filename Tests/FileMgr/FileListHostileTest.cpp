/** @file
  List files from any disk: empty, cut short, odd line ends, too many lines,
  zero bytes. Each loads what it holds whole, and nothing is read or kept
  beyond that.
**/
#include "FileMgrTest.h"

#include <cstdio>

namespace {

class FileListHostileTest : public FileMgrTest {
protected:
  /** Puts List on a disk volume and a firmware volume with one file per GUID text, holding its text. **/
  HostFirmwareVolume &
  Prepare (const std::string &List, const std::vector<std::string> &Guids)
  {
    Platform ().Volumes ().AddDiskVolume ().AddFile (u"FileList.lst", List);
    HostFirmwareVolume &Volume = Platform ().Volumes ().AddFirmwareVolume ();
    for (const std::string &Text : Guids) {
      Volume.AddRawFile (Guid (Text), Bytes (Text));
    }

    return Volume;
  }

  std::string
  Lookup (const std::u16string &Name)
  {
    FileRead Read = ReadByName (Name);
    return EFI_ERROR (Read.Status) ? "not found" : Read.Data;
  }

  /** @return the live pool buffers: while a list is loaded, the array and one per name. **/
  UINTN
  Live ()
  {
    return Platform ().Pool ().LiveCount ();
  }

  const std::string mA = "11111111-2222-3333-4444-555555555555";
  const std::string mB = "aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee";
};

TEST_F (FileListHostileTest, AnEmptyListLoadsNothingAndIsNotReplacedByTheFirmwareList)
{
  HostFirmwareVolume &Volume = Prepare ("", {});
  Volume.AddRawFile (mListGuid, Bytes (Line (mA, "One")));

  EXPECT_EQ (InitFileList (&mListGuid), EFI_NOT_FOUND);
  EXPECT_EQ (Live (), 0u);
  EXPECT_TRUE (Volume.Reads ().empty ());
}

TEST_F (FileListHostileTest, AFileEndingInsideAGuidDropsThatPartialEntry)
{
  Prepare (Line (mA, "One") + mB.substr (0, 20), {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 2u);
  EXPECT_EQ (Lookup (u"One"), mA);
}

TEST_F (FileListHostileTest, AFileEndingBeforeTheSeparatorDropsThatPartialEntry)
{
  Prepare (Line (mA, "One") + mB, {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 2u);
}

TEST_F (FileListHostileTest, AGuidAndSeparatorAtTheEndMakeAnEntryWithAnEmptyName)
{
  Prepare (Line (mA, "One") + mB + "=", {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 3u);
  EXPECT_EQ (Lookup (u""), mB) << "an empty name equals only an empty name";
  EXPECT_EQ (Lookup (u"One"), mA);
}

TEST_F (FileListHostileTest, ACarriageReturnWithoutLineFeedEndsTheLineAndLosesNoByte)
{
  Prepare (mA + " One\r" + mB + " Two\r\n", {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Lookup (u"One"), mA);
  EXPECT_EQ (Lookup (u"Two"), mB);
}

TEST_F (FileListHostileTest, OnlyTheFirst255EntriesAreKept)
{
  std::string List;
  for (UINTN Index = 0; Index < 300; Index++) {
    char Name[8];
    std::snprintf (Name, sizeof (Name), "F%03u", (unsigned)Index);
    List += Line (NumberedGuidText (Index), Name);
  }

  Prepare (List, {NumberedGuidText (0), NumberedGuidText (254), NumberedGuidText (255)});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 1u + 255u);
  EXPECT_EQ (Lookup (u"F000"), NumberedGuidText (0));
  EXPECT_EQ (Lookup (u"F254"), NumberedGuidText (254));
  EXPECT_EQ (Lookup (u"F255"), "not found");
}

TEST_F (FileListHostileTest, AZeroByteEndsTheNameAndTheRestOfItsLineIsSkipped)
{
  Prepare (mA + " Ab" + std::string (1, '\0') + "cd\r\n" + Line (mB, "Next"), {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 3u);
  EXPECT_EQ (Lookup (u"Ab"), mA);
  EXPECT_EQ (Lookup (u"cd"), "not found");
  EXPECT_EQ (Lookup (u"Next"), mB);
}

TEST_F (FileListHostileTest, AZeroByteInTheLastLineEndsTheList)
{
  Prepare (mA + " Ab" + std::string (3, '\0') + mB + " Two", {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 2u);
  EXPECT_EQ (Lookup (u"Two"), "not found");
}

TEST_F (FileListHostileTest, GarbageInTheGuidTextGivesAGuidAndNoOverrun)
{
  // Blanks are skipped inside a field, and a field stops at its first non-digit.
  Prepare (std::string (36, ' ') + " Blank\r\n" + std::string (36, 'z') + " Zed", {});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Live (), 3u);
  EXPECT_EQ (Lookup (u"Zed"), "not found") << "the zero GUID names no firmware file";
}

TEST_F (FileListHostileTest, AMegabyteNameIsLoadedWhole)
{
  std::string Name (1 << 20, 'n');
  Prepare (Line (mA, Name) + Line (mB, "Short"), {mA, mB});

  EXPECT_EQ (InitFileList (&mListGuid), EFI_SUCCESS);
  EXPECT_EQ (Lookup (std::u16string (1 << 20, u'N')), mA);
  EXPECT_EQ (Lookup (u"Short"), mB);
}

} // namespace
