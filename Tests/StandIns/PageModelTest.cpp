/** @file
  The page model: pages and controls as made, attributes, texts, the prompt
  page, and the refusal of bad handles.
**/
#include "StandInTest.h"

#include <set>

namespace {

using StandInPageModelTest = StandInTest;

std::vector<UINTN>
Attribute (UINTN Page, UINTN Control, UINT32 Tag)
{
  UINTN Values[3] = {0, 0, 0};

  if (!StandInGetAttribute (Page, Control, Tag, Values)) {
    return {};
  }

  return {Values[0], Values[1], Values[2]};
}

TEST_F (StandInPageModelTest, PageAndControlsKeepWhatTheyWereMadeWith)
{
  UINTN Page = NewPage (8);
  UINTN Image = NewImageControl (Page, HandlerFunction (HandlerA));
  UINTN Text = NewTextControl (Page, 11);
  UINTN Progress = NewProgressControl (Page, HandlerFunction (HandlerB));
  STAND_IN_PAGE_INFO PageInfo{};
  STAND_IN_CONTROL_INFO Info{};
  STAND_IN_TEXT TextInfo{};

  ASSERT_NE (Page, 0U);
  EXPECT_EQ (std::set<UINTN> ({Page, Image, Text, Progress}).size (), 4U) << "handles are distinct";
  EXPECT_EQ (std::set<UINTN> ({Image, Text, Progress}).count (0), 0U) << "handles are not zero";

  ASSERT_TRUE (StandInFindPage (Page, &PageInfo));
  EXPECT_EQ (PageInfo.PageId, (UINTN)UI_PAGE_ID);
  EXPECT_EQ (PageInfo.HiiHandle, mHii);
  EXPECT_EQ (PageInfo.ThemeId, 8U);
  EXPECT_FALSE (PageInfo.Prompt);
  EXPECT_FALSE (PageInfo.Destroyed);
  EXPECT_EQ (PageInfo.ControlCount, 3U);
  EXPECT_EQ (StandInPageCount (), 1U);
  EXPECT_EQ (StandInPageAt (0), Page);
  EXPECT_EQ (StandInPageAt (1), 0U);
  EXPECT_EQ (StandInControlAt (Page, 0), Image);
  EXPECT_EQ (StandInControlAt (Page, 1), Text);
  EXPECT_EQ (StandInControlAt (Page, 2), Progress);
  EXPECT_EQ (StandInControlAt (Page, 3), 0U);

  ASSERT_TRUE (StandInFindControl (Page, Image, &Info));
  EXPECT_EQ (Info.Kind, StandInControlImage);
  EXPECT_EQ (Info.Container, (UINTN)UI_PAGE_CONTAINER);
  EXPECT_EQ (Info.Argument, 2U);
  EXPECT_EQ (Info.Handler, HandlerFunction (HandlerA));

  ASSERT_TRUE (StandInFindControl (Page, Progress, &Info));
  EXPECT_EQ (Info.Kind, StandInControlProgress);
  EXPECT_EQ (Info.Argument, 3U);
  EXPECT_EQ (Info.Minimum, 0U);
  EXPECT_EQ (Info.Maximum, 100U);
  EXPECT_EQ (Info.Handler, HandlerFunction (HandlerB));

  ASSERT_TRUE (StandInFindControl (Page, Text, &Info));
  EXPECT_EQ (Info.Kind, StandInControlText);
  EXPECT_EQ (Info.Handler, nullptr);
  ASSERT_TRUE (StandInGetControlText (Page, Text, &TextInfo));
  EXPECT_EQ (TextInfo.String, nullptr);
  EXPECT_EQ (TextInfo.HiiHandle, mHii);
  EXPECT_EQ (TextInfo.StringId, 11U) << "a text control made with a string id shows that string";

  //
  // A control of one page is not a control of another.
  //
  UINTN Other = NewPage ();
  EXPECT_FALSE (StandInFindControl (Other, Image, &Info));
  EXPECT_EQ (NewTextControl (Other) == Text, false);
}

TEST_F (StandInPageModelTest, PromptPageHasItsFixedControlsAndRecordsTheShow)
{
  PROMPT_INTERFACE *Prompt = nullptr;
  UINTN Page = NewPromptPage (&Prompt);
  STAND_IN_PAGE_INFO PageInfo{};
  STAND_IN_CONTROL_INFO Info{};
  STAND_IN_PROMPT_INFO Shown{};
  static const STAND_IN_CONTROL_KIND Kinds[] = {StandInControlText,  StandInControlText,   StandInControlText,
                                                StandInControlField, StandInControlButton, StandInControlButton};

  ASSERT_TRUE (StandInFindPage (Page, &PageInfo));
  EXPECT_TRUE (PageInfo.Prompt);
  EXPECT_EQ (PageInfo.ControlCount, 6U);
  for (UINTN Index = 0; Index < 6; Index++) {
    UINTN Control = PROMPT_CONTROL_TEXT_1 + Index;

    ASSERT_TRUE (StandInFindControl (Page, Control, &Info)) << Control;
    EXPECT_EQ (Info.Kind, Kinds[Index]) << Control;
    EXPECT_EQ (Info.Container, (UINTN)PROMPT_CONTAINER) << Control;
  }

  EXPECT_FALSE (StandInGetPrompt (Page, &Shown)) << "not shown yet";
  EXPECT_EQ (mUi->Attributes->SetControlStyle (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR,
                                               0xAAAAAA, 0, 0),
             EFI_SUCCESS);
  EXPECT_EQ (Attribute (Page, PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR), (std::vector<UINTN>{0xAAAAAA, 0, 0}));
  EXPECT_EQ (mUi->Attributes->SetControlStyle (Page, PROMPT_CONTAINER, 1717, UI_STYLE_FONT, 0, 0, 22),
             EFI_INVALID_PARAMETER)
    << "1717 is no prompt control";

  std::vector<CHAR16> Title = Wide ("Admin Unlock");
  std::vector<CHAR16> Message = Wide ("Password is incorrect, re-enter the password");
  std::vector<CHAR16> Caption = Wide ("SN123-3B7C");
  ASSERT_EQ (Prompt->ShowPrompt (Title.data (), Message.data (), Caption.data (), 0, 32, HandlerFunction (HandlerC)),
             EFI_SUCCESS);
  Title.assign (Title.size (), 0); // the driver's buffers are on its stack
  Message.assign (Message.size (), 0);
  Caption.assign (Caption.size (), 0);

  ASSERT_TRUE (StandInGetPrompt (Page, &Shown));
  EXPECT_EQ (Shown.ShowCount, 1U);
  EXPECT_EQ (Narrow (Shown.Title), "Admin Unlock");
  EXPECT_EQ (Narrow (Shown.Message), "Password is incorrect, re-enter the password");
  EXPECT_EQ (Narrow (Shown.Caption), "SN123-3B7C");
  EXPECT_EQ (Shown.MaxLength, 32U);
  EXPECT_EQ (Shown.Handler, HandlerFunction (HandlerC));

  //
  // What is typed is what the field's text reads; emptying the field empties it.
  //
  UINTN Cell = 0;
  std::vector<CHAR16> Typed = Wide ("tamo");
  ASSERT_EQ (StandInTypeText (0, Typed.data ()), EFI_SUCCESS);
  ASSERT_EQ (
    mUi->Attributes->GetControlData (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, (UINTN)&Cell, 0, 0),
    EFI_SUCCESS);
  EXPECT_EQ (Narrow (AsPointer<CONST CHAR16> (Cell)), "tamo");
  ASSERT_EQ (mUi->Attributes->SetControlData (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, 0, 0, 0),
             EFI_SUCCESS);
  ASSERT_EQ (
    mUi->Attributes->GetControlData (Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, (UINTN)&Cell, 0, 0),
    EFI_SUCCESS);
  EXPECT_EQ (Narrow (AsPointer<CONST CHAR16> (Cell)), "");

  EXPECT_EQ (StandInTypeText (NewPage (), Typed.data ()), EFI_INVALID_PARAMETER) << "not a prompt page";
}

TEST_F (StandInPageModelTest, BadPagesAndControlsAreRefusedWithoutEffect)
{
  UINTN Page = NewPage ();
  UINTN Other = NewPage ();
  UINTN Text = NewTextControl (Page);
  UINTN Progress = NewProgressControl (Page);
  UINTN OtherText = NewTextControl (Other);
  UINTN Rejected = StandInRejectedCount (StandInOpSetControlProperty);
  UI_ATTRIBUTES *Attributes = mUi->Attributes;

  struct Case {
    const char *What;
    UINTN Page;
    UINTN Container;
    UINTN Control;
  } Cases[] = {
    {"null page", 0, UI_PAGE_CONTAINER, Text},
    {"unknown page", Page + 1000, UI_PAGE_CONTAINER, Text},
    {"a control handle as page", Text, UI_PAGE_CONTAINER, Text},
    {"null control", Page, UI_PAGE_CONTAINER, 0},
    {"control of another page", Page, UI_PAGE_CONTAINER, OtherText},
    {"unknown control", Page, UI_PAGE_CONTAINER, Text + 0x100},
    {"wrong container", Page, PROMPT_CONTAINER, Text},
    {"prompt id on an ordinary page", Page, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD},
  };

  for (const Case &Each : Cases) {
    EXPECT_EQ (Attributes->SetControlProperty (Each.Page, Each.Container, Each.Control, UI_PROPERTY_VISIBLE, 0, 0, 0),
               EFI_INVALID_PARAMETER)
      << Each.What;
  }

  EXPECT_EQ (StandInRejectedCount (StandInOpSetControlProperty) - Rejected, ARRAY_SIZE (Cases));
  EXPECT_TRUE (StandInIsVisible (Page, Text));
  EXPECT_TRUE (StandInIsVisible (Other, OtherText));

  //
  // A tag of another family, or one the control cannot have.
  //
  EXPECT_EQ (Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Text, UI_PROPERTY_VISIBLE, 0, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Progress, UI_DATA_PROGRESS_VALUE, 5, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Text, UI_DATA_PROGRESS_VALUE, 5, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Progress, UI_DATA_TEXT, 0, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Attributes->SetControlStyle (Page, UI_PAGE_CONTAINER, Text, UI_STYLE_IMAGE, 0, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_TRUE (StandInIsVisible (Page, Text));
  EXPECT_TRUE (Attribute (Page, Progress, UI_DATA_PROGRESS_VALUE).empty ());

  //
  // Out cells and out handles must be given.
  //
  UINTN Control = 0;
  EXPECT_EQ (Attributes->GetControlStyle (Page, UI_PAGE_CONTAINER, Text, UI_STYLE_LAYOUT, 0, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Attributes->GetControlData (Page, UI_PAGE_CONTAINER, Text, UI_DATA_TEXT, 0, 0, 0), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->CreatePage (nullptr, UI_PAGE_ID, 0, 0, 0, mHii, 2), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->CreateTextControl (Page, UI_PAGE_CONTAINER, mHii, 0, 0, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->CreateTextControl (0, UI_PAGE_CONTAINER, mHii, 0, 0, &Control), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->CreateTextControl (Page, 0, mHii, 0, 0, &Control), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Control, 0U);
  EXPECT_EQ (mEngine->CreatePromptPage (0, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->DestroyPage (0), EFI_INVALID_PARAMETER);
}

TEST_F (StandInPageModelTest, DestroyedPageIsRefusedButStaysReadable)
{
  UINTN Page = NewPage ();
  UINTN Text = NewTextControl (Page);
  UINTN Control = 0;
  UINTN Cell = 0;
  STAND_IN_PAGE_INFO Info{};
  std::vector<CHAR16> Message = Wide ("F12 Boot Options");

  ASSERT_EQ (
    mUi->Attributes->SetControlData (Page, UI_PAGE_CONTAINER, Text, UI_DATA_TEXT, (UINTN)Message.data (), 0, 0),
    EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_SUCCESS);
  ASSERT_EQ (mEngine->DestroyPage (Page), EFI_SUCCESS);

  EXPECT_EQ (StandInPageCount (), 0U);
  EXPECT_EQ (State ().ActivePage, 0U) << "destroying the active page leaves none active";
  EXPECT_EQ (mEngine->DestroyPage (Page), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Attributes->SetControlProperty (Page, UI_PAGE_CONTAINER, Text, UI_PROPERTY_VISIBLE, 0, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Attributes->GetControlData (Page, UI_PAGE_CONTAINER, Text, UI_DATA_TEXT, (UINTN)&Cell, 0, 0),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (Cell, 0U);
  EXPECT_EQ (mUi->Pages->RefreshPage (Page), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Pages->DisplayPage (Page, 0), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Pages->SetActivePage (Page), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mEngine->CreateTextControl (Page, UI_PAGE_CONTAINER, mHii, 0, 0, &Control), EFI_INVALID_PARAMETER);
  EXPECT_TRUE (StandInIsVisible (Page, Text));

  ASSERT_TRUE (StandInFindPage (Page, &Info));
  EXPECT_TRUE (Info.Destroyed);
  EXPECT_EQ (Info.DisplayCount, 1U);
  STAND_IN_TEXT Shown{};
  ASSERT_TRUE (StandInGetControlText (Page, Text, &Shown));
  EXPECT_EQ (Narrow (Shown.String), "F12 Boot Options") << "what the page showed can be read after it closed";

  UINTN Next = NewPage ();
  EXPECT_NE (Next, Page) << "a handle is never handed out twice";
}

} // namespace
