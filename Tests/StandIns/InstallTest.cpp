/** @file
  Installation and removal of both stand-ins: the protocols at the slots the
  driver calls, the statuses of repeated or wrong calls, and the release of
  every pool buffer.
**/
#include "StandInTest.h"

#include <Library/UefiBootServicesTableLib.h>

namespace {

using StandInInstallTest = StandInTest;

TEST_F (StandInInstallTest, ProtocolsCarryTheSlotsTheDriverCalls)
{
  EXPECT_NE (mEngine->CreatePromptPage, nullptr);
  EXPECT_NE (mEngine->CreatePage, nullptr);
  EXPECT_NE (mEngine->DestroyPage, nullptr);
  EXPECT_NE (mEngine->CreateImageControl, nullptr);
  EXPECT_NE (mEngine->CreateTextControl, nullptr);
  EXPECT_NE (mEngine->CreateProgressControl, nullptr);
  ASSERT_NE (mUi->Services, nullptr);
  ASSERT_NE (mUi->Services->Session, nullptr);
  ASSERT_NE (mUi->Services->State, nullptr);
  ASSERT_NE (mUi->Services->Strings, nullptr);
  ASSERT_NE (mUi->Services->Images, nullptr);
  EXPECT_NE (mUi->Services->Session->SessionRequest, nullptr);
  EXPECT_NE (mUi->Services->Session->EndUiSession, nullptr);
  EXPECT_NE (mUi->Services->State->ResetUiState, nullptr);
  EXPECT_NE (mUi->Services->Strings->GetString, nullptr);
  EXPECT_NE (mUi->Services->Images->AddImageData, nullptr);
  EXPECT_NE (mUi->Services->Images->GetImage, nullptr);
  EXPECT_NE (mUi->Services->SetUiMode, nullptr);
  ASSERT_NE (mUi->Attributes, nullptr);
  EXPECT_NE (mUi->Attributes->SetControlProperty, nullptr);
  EXPECT_NE (mUi->Attributes->GetControlStyle, nullptr);
  EXPECT_NE (mUi->Attributes->SetControlStyle, nullptr);
  EXPECT_NE (mUi->Attributes->GetControlData, nullptr);
  EXPECT_NE (mUi->Attributes->SetControlData, nullptr);
  ASSERT_NE (mUi->Pages, nullptr);
  EXPECT_NE (mUi->Pages->RefreshPage, nullptr);
  EXPECT_NE (mUi->Pages->GetActivePage, nullptr);
  EXPECT_NE (mUi->Pages->SetActivePage, nullptr);
  EXPECT_NE (mUi->Pages->SetEventHandler, nullptr);
  EXPECT_NE (mUi->Pages->GetEventHandler, nullptr);
  EXPECT_NE (mUi->Pages->RunEventLoop, nullptr);
  EXPECT_NE (mUi->Pages->ExitEventLoop, nullptr);
  EXPECT_NE (mUi->Pages->AddImagePackage, nullptr);
  EXPECT_NE (mUi->Pages->DisplayPage, nullptr);
  EXPECT_TRUE (Platform ().Handles ().HasProtocol (mEngineHandle, gPageEngineProtocolGuid));
  EXPECT_TRUE (Platform ().Handles ().HasProtocol (mFrameworkHandle, gUiFrameworkProtocolGuid));
}

TEST_F (StandInInstallTest, RepeatedAndWrongCallsGetClearStatuses)
{
  EFI_HANDLE Another = nullptr;

  EXPECT_EQ (InstallPageEngineStandIn (&Another), EFI_ALREADY_STARTED);
  EXPECT_EQ (InstallUiFrameworkStandIn (&Another), EFI_ALREADY_STARTED);
  EXPECT_EQ (Another, nullptr);
  EXPECT_EQ (InstallPageEngineStandIn (nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (UninstallPageEngineStandIn (mFrameworkHandle == mEngineHandle ? nullptr : mFrameworkHandle),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (UninstallUiFrameworkStandIn (nullptr), EFI_INVALID_PARAMETER);

  ASSERT_EQ (UninstallUiFrameworkStandIn (mFrameworkHandle), EFI_SUCCESS);
  EXPECT_EQ (UninstallUiFrameworkStandIn (mFrameworkHandle), EFI_NOT_STARTED);
  mFrameworkHandle = nullptr;

  VOID *Interface = nullptr;
  EXPECT_EQ (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, &Interface), EFI_NOT_FOUND);
}

TEST_F (StandInInstallTest, UninstallReleasesEveryPoolBuffer)
{
  const UINTN Baseline = Platform ().Pool ().LiveCount ();
  PROMPT_INTERFACE *Prompt = nullptr;
  UINTN Prompted = NewPromptPage (&Prompt);
  std::vector<CHAR16> Text = Wide ("Preparing to enter BIOS Setup");
  std::vector<UINT8> Bmp = {'B', 'M', 0, 0, 0, 0, 0, 0, 0,  0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0,
                            0,   0,   1, 0, 0, 0, 1, 0, 24, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0,
                            0,   0,   0, 0, 0, 0, 0, 0, 0,  0, 0,  0, 0, 0, 1,  2, 3, 0};
  UINTN Cell = 0;

  //
  // Many pages and attributes, so that every array has grown more than once.
  //
  for (UINTN Round = 0; Round < 20; Round++) {
    UINTN Page = NewPage ();
    UINTN Image = NewImageControl (Page);
    UINTN Label = NewTextControl (Page);

    for (UINT32 Tag = 0; Tag < 12; Tag++) {
      ASSERT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Image, 0x73740100 + Tag, Round, 0, 0),
                 EFI_SUCCESS);
    }

    ASSERT_EQ (
      mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Label, UI_DATA_TEXT, (UINTN)Text.data (), 0, 0),
      EFI_SUCCESS);
    ASSERT_EQ (mUi->Services->SetUiMode (Round % 3), EFI_SUCCESS);
    if (Round == 0) {
      ASSERT_EQ (mUi->Services->Images->AddImageData (&Cell, Text.data (), Bmp.data (), Bmp.size ()), EFI_SUCCESS);
      ASSERT_EQ (mUi->Services->Images->GetImage (Text.data (), &Cell), EFI_SUCCESS);
      ASSERT_EQ (mUi->Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Image, UI_STYLE_IMAGE, Cell, 0, 0),
                 EFI_SUCCESS);
      UINTN Record = 0;
      ASSERT_EQ (
        mUi->Attributes->GetControlStyle (Page, UI_PAGE_CONTAINER, Image, UI_STYLE_IMAGE_RECORD, (UINTN)&Record, 0, 0),
        EFI_SUCCESS);
    }

    if ((Round % 2) == 0) {
      ASSERT_EQ (mEngine->DestroyPage (Page), EFI_SUCCESS);
    }
  }

  ASSERT_EQ (Prompt->ShowPrompt (Text.data (), Text.data (), Text.data (), 0, 32, HandlerFunction (HandlerA)),
             EFI_SUCCESS);
  ASSERT_EQ (StandInTypeText (Prompted, Text.data ()), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->AddImagePackage (Bmp.data (), Bmp.size (), &gUiFrameworkProtocolGuid, 0), EFI_SUCCESS);
  for (UINTN Index = 0; Index < 20; Index++) {
    Script (0, UI_EVENT_KEY, Index);
  }

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  ASSERT_GT (Platform ().Pool ().LiveCount (), Baseline);

  ASSERT_EQ (UninstallUiFrameworkStandIn (mFrameworkHandle), EFI_SUCCESS);
  ASSERT_EQ (UninstallPageEngineStandIn (mEngineHandle), EFI_SUCCESS);
  mFrameworkHandle = nullptr;
  mEngineHandle = nullptr;
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Baseline);
  EXPECT_EQ (StandInPageCount (), 0U);
  EXPECT_EQ (StandInPageAt (0), 0U);

  //
  // Whoever kept the interfaces gets nothing made in pool any more.
  //
  UINTN Page = 0;
  EXPECT_EQ (mEngine->CreatePage (&Page, UI_PAGE_ID, 0, 0, 0, mHii, 2), EFI_NOT_STARTED);
  EXPECT_EQ (mUi->Services->SetUiMode (1), EFI_NOT_STARTED);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_NOT_STARTED);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), Baseline);
}

TEST_F (StandInInstallTest, PoolExhaustionFailsCleanly)
{
  UINTN Page = NewPage ();
  UINTN Label = NewTextControl (Page);
  std::vector<CHAR16> Text = Wide ("Updating");
  STAND_IN_TEXT Shown{};

  Platform ().Pool ().FailAllocation (1);
  EXPECT_EQ (mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Label, UI_DATA_TEXT, (UINTN)Text.data (), 0, 0),
             EFI_OUT_OF_RESOURCES);
  ASSERT_TRUE (StandInGetControlText (Page, Label, &Shown));
  EXPECT_EQ (Shown.String, nullptr) << "the old text stays";

  UINTN Another = 0;
  Platform ().Pool ().FailAllocationsAfter (0);
  EXPECT_EQ (mEngine->CreatePage (&Another, UI_PAGE_ID, 0, 0, 0, mHii, 2), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Another, 0U);
  Platform ().Pool ().StopFailing ();
  EXPECT_NE (NewPage (), 0U);
}

} // namespace
