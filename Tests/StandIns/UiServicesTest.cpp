/** @file
  Services of the UI framework stand-in: strings through HII, sessions, UI
  modes, image packages, the active page and the event handler.
**/
#include "StandInTest.h"

#include <map>

#include <Protocol/HiiString.h>

namespace {

///
/// An HII string protocol that serves a fixed table and counts its calls.
///
struct FakeHiiStrings {
  EFI_HII_STRING_PROTOCOL Protocol{};
  std::map<std::pair<EFI_HII_HANDLE, EFI_STRING_ID>, std::string> Strings;
  UINTN Calls = 0;
  std::string Language;
};

FakeHiiStrings *mFake;

EFI_STATUS EFIAPI
FakeGetString (IN CONST EFI_HII_STRING_PROTOCOL *This,
               IN CONST CHAR8 *Language,
               IN EFI_HII_HANDLE PackageList,
               IN EFI_STRING_ID StringId,
               OUT EFI_STRING String,
               IN OUT UINTN *StringSize,
               OUT VOID **StringFontInfo OPTIONAL)
{
  mFake->Calls++;
  mFake->Language = Language;
  auto Found = mFake->Strings.find ({PackageList, StringId});
  if (Found == mFake->Strings.end ()) {
    return EFI_NOT_FOUND;
  }

  std::vector<CHAR16> Text = Wide (Found->second);
  UINTN Size = Text.size () * sizeof (CHAR16);
  if (*StringSize < Size) {
    *StringSize = Size;
    return EFI_BUFFER_TOO_SMALL;
  }

  std::copy (Text.begin (), Text.end (), String);
  *StringSize = Size;
  return EFI_SUCCESS;
}

class StandInServicesTest : public StandInTest {
protected:
  void
  InstallFakeHii ()
  {
    mHiiStrings.Protocol.GetString = FakeGetString;
    mFake = &mHiiStrings;
    ASSERT_NE (Platform ().Handles ().InstallProtocol (gEfiHiiStringProtocolGuid, &mHiiStrings.Protocol), nullptr);
  }

  FakeHiiStrings mHiiStrings;
};

TEST_F (StandInServicesTest, GetStringLooksUpHiiOnceAndKeepsTheCopy)
{
  EFI_HII_HANDLE Other = AsPointer<VOID> (0x4812);
  std::string Long (150, 'w');
  CHAR16 *First = nullptr;
  CHAR16 *Again = nullptr;
  CHAR16 *Longer = nullptr;
  CHAR16 *FromOther = nullptr;

  InstallFakeHii ();
  mHiiStrings.Strings[{mHii, 19}] = "Admin Unlock";
  mHiiStrings.Strings[{mHii, 20}] = Long; // longer than a first try holds
  mHiiStrings.Strings[{Other, 19}] = "Other";

  ASSERT_EQ (mUi->Services->Strings->GetString (0, mHii, 19, &First), EFI_SUCCESS);
  EXPECT_EQ (Narrow (First), "Admin Unlock");
  EXPECT_EQ (mHiiStrings.Language, "en-US");
  ASSERT_EQ (mUi->Services->Strings->GetString (0, mHii, 20, &Longer), EFI_SUCCESS);
  EXPECT_EQ (Narrow (Longer), Long);
  ASSERT_EQ (mUi->Services->Strings->GetString (0, Other, 19, &FromOther), EFI_SUCCESS);
  EXPECT_EQ (Narrow (FromOther), "Other");

  UINTN CallsBefore = mHiiStrings.Calls;
  ASSERT_EQ (mUi->Services->Strings->GetString (0, mHii, 19, &Again), EFI_SUCCESS);
  EXPECT_EQ (Again, First) << "the same string is handed out again";
  EXPECT_EQ (mHiiStrings.Calls, CallsBefore) << "and not looked up again";

  CHAR16 *Missing = AsPointer<CHAR16> (0x1);
  EXPECT_EQ (mUi->Services->Strings->GetString (0, mHii, 99, &Missing), EFI_NOT_FOUND);
  EXPECT_EQ (Missing, AsPointer<CHAR16> (0x1));
  EXPECT_EQ (mUi->Services->Strings->GetString (0, mHii, 19, nullptr), EFI_INVALID_PARAMETER);
}

TEST_F (StandInServicesTest, GetStringFailsWithoutHii)
{
  CHAR16 *String = nullptr;

  EXPECT_EQ (mUi->Services->Strings->GetString (0, mHii, 19, &String), EFI_NOT_FOUND);
  EXPECT_EQ (String, nullptr);
}

TEST_F (StandInServicesTest, TextReferenceReadsTheHiiString)
{
  UINTN Page = NewPage ();
  UINTN Percent = NewTextControl (Page, 11);
  UINTN Cell = 0;

  InstallFakeHii ();
  mHiiStrings.Strings[{mHii, 11}] = "   000%            ";
  ASSERT_EQ (mUi->Attributes->GetControlData (Page, UI_PAGE_CONTAINER, Percent, UI_DATA_TEXT, (UINTN)&Cell, 0, 0),
             EFI_SUCCESS);
  EXPECT_EQ (Narrow (AsPointer<CONST CHAR16> (Cell)), "   000%            ");
}

TEST_F (StandInServicesTest, SessionRequestIsRecordedAndAnswersAsSet)
{
  ASSERT_EQ (mUi->Services->Session->SessionRequest (mUi->Services, 1, 2, 3, 4), EFI_SUCCESS);
  StandInSetSessionRequestStatus (EFI_DEVICE_ERROR);
  EXPECT_EQ (mUi->Services->Session->SessionRequest (mUi->Services, 5, 6, 7, 8), EFI_DEVICE_ERROR);

  STAND_IN_FRAMEWORK_STATE Now = State ();
  EXPECT_EQ (Now.SessionRequests, 2U);
  EXPECT_EQ (std::vector<UINTN> (Now.SessionArguments, Now.SessionArguments + 5),
             (std::vector<UINTN>{(UINTN)mUi->Services, 5, 6, 7, 8}));

  EXPECT_EQ (mUi->Services->Session->EndUiSession (), EFI_SUCCESS);
  EXPECT_EQ (mUi->Services->State->ResetUiState (0), EFI_SUCCESS);
  EXPECT_EQ (State ().EndUiSessions, 1U);
  EXPECT_EQ (State ().ResetUiStates, 1U);
}

TEST_F (StandInServicesTest, ActivePageAndEventHandlerAreSavedAndRestored)
{
  UINTN Welcome = NewPage ();
  UINTN Prompt = NewPromptPage ();
  UINTN Saved = 0x77;
  UI_EVENT_HANDLER SavedHandler = HandlerFunction (HandlerC);
  STAND_IN_PAGE_INFO Info{};

  ASSERT_EQ (mUi->Pages->GetActivePage (&Saved), EFI_SUCCESS);
  EXPECT_EQ (Saved, 0U) << "no page is active at first";
  ASSERT_EQ (mUi->Pages->GetEventHandler (&SavedHandler), EFI_SUCCESS);
  EXPECT_EQ (SavedHandler, nullptr);

  ASSERT_EQ (mUi->Pages->DisplayPage (Welcome, 0), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->GetActivePage (&Saved), EFI_SUCCESS);
  EXPECT_EQ (Saved, Welcome) << "a displayed page is the active page";
  ASSERT_EQ (mUi->Pages->GetEventHandler (&SavedHandler), EFI_SUCCESS);
  EXPECT_EQ (SavedHandler, HandlerFunction (HandlerA));

  ASSERT_EQ (mUi->Pages->SetActivePage (Prompt), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerB)), EFI_SUCCESS);
  EXPECT_EQ (State ().ActivePage, Prompt);
  EXPECT_EQ (mUi->Pages->SetActivePage (Prompt + 500), EFI_INVALID_PARAMETER);
  EXPECT_EQ (State ().ActivePage, Prompt);

  ASSERT_EQ (mUi->Pages->SetEventHandler (SavedHandler), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->SetActivePage (Saved), EFI_SUCCESS);
  EXPECT_EQ (State ().ActivePage, Welcome);
  EXPECT_EQ (State ().EventHandler, HandlerFunction (HandlerA));
  ASSERT_EQ (mUi->Pages->SetActivePage (0), EFI_SUCCESS);
  EXPECT_EQ (State ().ActivePage, 0U);

  ASSERT_EQ (mUi->Pages->RefreshPage (Welcome), EFI_SUCCESS);
  ASSERT_EQ (mUi->Pages->RefreshPage (Welcome), EFI_SUCCESS);
  ASSERT_TRUE (StandInFindPage (Welcome, &Info));
  EXPECT_EQ (Info.RefreshCount, 2U);
  EXPECT_EQ (Info.DisplayCount, 1U);
  EXPECT_EQ (mUi->Pages->RefreshPage (0), EFI_INVALID_PARAMETER) << "a page that failed to be made";
  EXPECT_EQ (mUi->Pages->DisplayPage (0, 0), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mUi->Pages->GetActivePage (nullptr), EFI_INVALID_PARAMETER);
}

} // namespace
