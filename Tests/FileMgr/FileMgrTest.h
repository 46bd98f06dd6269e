/** @file
  Fixture of the file manager tests: a simulated boot with disk and firmware
  volumes, and helpers that read files through the library's interface.

  TearDown releases the file list (library state kept by design) and fails the
  test when a file or root handle was left open on a disk volume; the platform
  fixture then fails it for any pool buffer left.
**/
#ifndef FILE_MGR_TEST_H_
#define FILE_MGR_TEST_H_

#include <string>
#include <vector>

#include "PlatformTest.h"

#include <Library/FileMgrLib.h>

///
/// A null-terminated CHAR16 copy of a u"" text, for the library's names.
///
class WideName {
public:
  explicit WideName (const std::u16string &Text) : mChars (Text.begin (), Text.end ())
  {
    mChars.push_back (0);
  }

  operator const CHAR16 * () const
  {
    return mChars.data ();
  }

private:
  std::vector<CHAR16> mChars;
};

///
/// What one read by name gave.
///
struct FileRead {
  EFI_STATUS Status;
  std::string Data; ///< the Size bytes of the buffer
  UINTN Size;
  bool HasBuffer;
};

class FileMgrTest : public PlatformTest {
protected:
  static constexpr const char *mListGuidText = "6F1C2E4A-9B3D-4E8F-A1B2-C3D4E5F60718";
  static constexpr const char *mLogoGuidText = "EB3001D5-F827-4938-95E2-5C8F644B966F";

  void TearDown () override;

  /** @return the GUID of its text form (36 characters). **/
  static EFI_GUID Guid (const std::string &Text);

  /** @return Text as bytes. **/
  static std::vector<UINT8> Bytes (const std::string &Text);

  /** @return one list line: GUID text, a blank, the name, CR LF. **/
  static std::string Line (const std::string &GuidText, const std::string &Name);

  /** @return a GUID text that differs for every Index (for long lists). **/
  static std::string NumberedGuidText (UINTN Index);

  const EFI_GUID mListGuid = Guid (mListGuidText); ///< the list's firmware-volume file
  const EFI_GUID mLogoGuid = Guid (mLogoGuidText);

  /** Calls GetFileData with a null buffer, copies what it gave and releases it. **/
  FileRead ReadByName (const std::u16string &Name);

  /** Calls ReadFileDataFromFS, copies what it gave and releases it. **/
  FileRead ReadFromDisk (const std::u16string &Name);

  /** Calls ReadFileDataFromFVByGuid, copies what it gave and releases it. **/
  FileRead ReadByGuid (const EFI_GUID &FileGuid);

  /** Copies Size bytes of Buffer and releases it (null allowed). **/
  static FileRead Take (EFI_STATUS Status, VOID *&Buffer, UINTN Size);
};

#endif
