/** @file
  HandOverImagePackage: what AddImagePackage of the UI framework receives, and
  that a missing framework is left alone.
**/
#include <Guid/KestUiGuids.h>
#include <gtest/gtest.h>

#include <vector>

#include "ResourceTestHelpers.h"
#include "UiResources.h"

using ResourceTest::GuidBytes;

namespace {

struct ADD_IMAGE_PACKAGE_CALL {
  VOID *Package;
  UINTN Size;
  std::array<UINT8, 16> Guid;
  UINTN Reserved;
};

std::vector<ADD_IMAGE_PACKAGE_CALL> mCalls;
EFI_STATUS mAnswer = EFI_SUCCESS;

EFI_STATUS
EFIAPI
RecordAddImagePackage (IN VOID *Package, IN UINTN Size, IN EFI_GUID *Guid, IN UINTN Reserved)
{
  mCalls.push_back ({Package, Size, GuidBytes (*Guid), Reserved});
  return mAnswer;
}

//
// A framework of which only the pages table's AddImagePackage is filled in.
//
struct FAKE_FRAMEWORK {
  UI_PAGES Pages{};
  UI_FRAMEWORK_PROTOCOL Protocol{};

  FAKE_FRAMEWORK ()
  {
    Pages.AddImagePackage = RecordAddImagePackage;
    Protocol.Pages = &Pages;
  }
};

class ImageHandOver : public testing::Test {
protected:
  void
  SetUp () override
  {
    mCalls.clear ();
    mAnswer = EFI_SUCCESS;
  }
};

} // namespace

TEST_F (ImageHandOver, PassesThePackageItsSizeAndTheDriverComponentGuid)
{
  FAKE_FRAMEWORK Framework;

  HandOverImagePackage (&Framework.Protocol);

  ASSERT_EQ (mCalls.size (), 1U);
  EXPECT_EQ (mCalls[0].Package, (const VOID *)&UserInterfaceImagePackage);
  EXPECT_EQ (mCalls[0].Size, 63854U);
  EXPECT_EQ (mCalls[0].Guid, GuidBytes ("4A5CA267-4016-460F-80EE-7B4C3D77FD62"));
  EXPECT_EQ (mCalls[0].Reserved, 0U);
}

TEST_F (ImageHandOver, MakesOneCallEvenWhenTheFrameworkRefuses)
{
  FAKE_FRAMEWORK Framework;

  mAnswer = EFI_OUT_OF_RESOURCES;
  HandOverImagePackage (&Framework.Protocol);
  HandOverImagePackage (&Framework.Protocol);

  // Each hand-over is one call, whatever the previous one answered.
  EXPECT_EQ (mCalls.size (), 2U);
}

TEST_F (ImageHandOver, DoesNothingWithoutAFramework)
{
  HandOverImagePackage (nullptr);

  EXPECT_TRUE (mCalls.empty ());
}

TEST_F (ImageHandOver, DoesNotCallThroughAMissingPagesTable)
{
  FAKE_FRAMEWORK Framework;

  Framework.Protocol.Pages = nullptr;
  HandOverImagePackage (&Framework.Protocol);
  Framework.Protocol.Pages = &Framework.Pages;
  Framework.Pages.AddImagePackage = nullptr;
  HandOverImagePackage (&Framework.Protocol);

  EXPECT_TRUE (mCalls.empty ());
}
