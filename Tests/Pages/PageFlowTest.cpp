/** @file
  The page flow fixture.
**/
#include "PageFlowTest.h"

#include "HostHii.h"

#include <Guid/KestUiGuids.h>
#include <IndustryStandard/SmBios.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

const std::u16string gFirstPasswordMessage =
  u"The administrative password is set on this computer. You cannot access Setup until the correct password is "
  u"entered. If you need to change any setup fields, you must first enter the administrative password in this field.";
const std::u16string gRetryPasswordMessage = u"Password is incorrect, re-enter the password";
const std::u16string gShutdownMessage = u"Password Failure: System Shutdown in 2 seconds";

std::vector<PageFlowTest::CallbackCall> PageFlowTest::mCallbacks;

namespace {

template <typename TYPE>
TYPE *
AsPointer (UINTN Value)
{
  return (TYPE *)Value; // NOLINT(performance-no-int-to-ptr)
}

struct ServiceInstaller {
  EFI_STATUS (EFIAPI *Install) (IN OUT EFI_HANDLE *Handle);
  EFI_STATUS (EFIAPI *Uninstall) (IN EFI_HANDLE Handle);
};

///
/// In the order of the FlowService bits.
///
const ServiceInstaller mInstallers[] = {
  {InstallSettingsStandIn, UninstallSettingsStandIn},
  {InstallServiceRequestStandIn, UninstallServiceRequestStandIn},
  {InstallBootMenuStandIn, UninstallBootMenuStandIn},
  {InstallSetupStateStandIn, UninstallSetupStateStandIn},
  {InstallDiagnosticsStandIn, UninstallDiagnosticsStandIn},
  {InstallPcdStandIn, UninstallPcdStandIn},
  {InstallBootLogoStandIn, UninstallBootLogoStandIn},
  {InstallSmbiosStandIn, UninstallSmbiosStandIn},
  {InstallPersonalityModuleStandIn, UninstallPersonalityModuleStandIn},
};

} // namespace

void
PageFlowTest::SetUp ()
{
  PlatformTest::SetUp ();
  StandInResetServices ();
  mCallbacks.clear ();
  ASSERT_EQ (InstallHostHii (), EFI_SUCCESS);
  ASSERT_EQ (InstallPageEngineStandIn (&mEngineHandle), EFI_SUCCESS);
  ASSERT_EQ (InstallUiFrameworkStandIn (&mFrameworkHandle), EFI_SUCCESS);
  ASSERT_EQ (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&mFramework), EFI_SUCCESS);
  StandInSetCallObserver (Observe, this);
  StandInSetEventSource (NextEvent, this);

  //
  // Members of both groups, as the components that act on the way into Setup.
  //
  ASSERT_EQ (
    gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, NoteGroup, this, &gSetupEntryEventGroupGuid, &mGroupEvents[0]),
    EFI_SUCCESS);
  ASSERT_EQ (
    gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, TPL_NOTIFY, NoteGroup, this, &gPreSetupEventGroupGuid, &mGroupEvents[1]),
    EFI_SUCCESS);
}

void
PageFlowTest::TearDown ()
{
  StandInSetCallObserver (nullptr, nullptr);
  StandInSetEventSource (nullptr, nullptr);
  for (EFI_EVENT Event : mGroupEvents) {
    if (Event != nullptr) {
      gBS->CloseEvent (Event);
    }
  }

  if (mImage != nullptr) {
    EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
  }

  for (UINTN Index = 0; Index < ARRAY_SIZE (mInstallers); Index++) {
    if (mServiceHandles[Index] != nullptr) {
      EXPECT_EQ (mInstallers[Index].Uninstall (mServiceHandles[Index]), EFI_SUCCESS);
    }
  }

  if (mFrameworkHandle != nullptr) {
    EXPECT_EQ (UninstallUiFrameworkStandIn (mFrameworkHandle), EFI_SUCCESS);
  }

  if (mEngineHandle != nullptr) {
    EXPECT_EQ (UninstallPageEngineStandIn (mEngineHandle), EFI_SUCCESS);
  }

  UninstallHostHii ();
  StandInResetServices ();
  PlatformTest::TearDown ();
}

::testing::AssertionResult
PageFlowTest::Boot (UINT32 Services)
{
  STATIC_ASSERT (ARRAY_SIZE (mInstallers) == ARRAY_SIZE (mServiceHandles), "one handle per service");
  for (UINTN Index = 0; Index < ARRAY_SIZE (mInstallers); Index++) {
    if (((Services >> Index) & 1) && EFI_ERROR (mInstallers[Index].Install (&mServiceHandles[Index]))) {
      return ::testing::AssertionFailure () << "service stand-in " << Index << " not installed";
    }
  }

  return StartImage ();
}

::testing::AssertionResult
PageFlowTest::Reload ()
{
  EFI_STATUS Status = Platform ().Images ().Unload (mImage);
  if (EFI_ERROR (Status)) {
    return ::testing::AssertionFailure () << "the unload returned " << Status;
  }

  return StartImage ();
}

::testing::AssertionResult
PageFlowTest::StartImage ()
{
  mImage = Platform ().Images ().CreateDriverImage ();
  EFI_STATUS Status = _ModuleEntryPoint (mImage, Platform ().SystemTable ());
  mUiDriver = (UI_DRIVER_PROTOCOL *)Platform ().Handles ().Interface (mImage, gUiDriverProtocolGuid);
  if (mUiDriver == nullptr) {
    return ::testing::AssertionFailure () << "no UI driver protocol; the entry returned " << Status;
  }

  return ::testing::AssertionSuccess ();
}

VOID
PageFlowTest::SetBytes (UINTN Item, const std::string &Bytes)
{
  EXPECT_EQ (StandInSetSetting (Item, Bytes.data (), Bytes.size ()), EFI_SUCCESS);
}

VOID
PageFlowTest::SetText (UINTN Item, const std::string &Text)
{
  SetBytes (Item, Text + std::string (1, '\0'));
}

VOID
PageFlowTest::SetByte (UINTN Item, UINT8 Value)
{
  SetBytes (Item, std::string (1, (char)Value));
}

STAND_IN_PASSWORD
PageFlowTest::Record (UINT64 Kind, UINT64 State, const CHAR16 *Password, UINT64 MaxLength)
{
  STAND_IN_PASSWORD Result{};

  Result.Kind = Kind;
  Result.State = State;
  Result.Password = Password;
  Result.MaxLength = MaxLength;
  Result.MaxAttempts = 3;
  return Result;
}

VOID
PageFlowTest::SetPasswords (const std::vector<STAND_IN_PASSWORD> &Records)
{
  StandInSetPasswords (Records.empty () ? nullptr : Records.data (), Records.size ());
}

std::vector<UINT8>
PageFlowTest::SmbiosSystemRecord (UINT8 SerialNumber, const std::vector<std::string> &Strings)
{
  std::vector<UINT8> Result (sizeof (SMBIOS_TABLE_TYPE1), 0);

  Result[OFFSET_OF (SMBIOS_STRUCTURE, Type)] = SMBIOS_TYPE_SYSTEM_INFORMATION;
  Result[OFFSET_OF (SMBIOS_STRUCTURE, Length)] = sizeof (SMBIOS_TABLE_TYPE1);
  Result[OFFSET_OF (SMBIOS_TABLE_TYPE1, SerialNumber)] = SerialNumber;
  for (const std::string &String : Strings) {
    Result.insert (Result.end (), String.begin (), String.end ());
    Result.push_back (0);
  }

  Result.resize (Result.size () + (Strings.empty () ? 2 : 1), 0);
  return Result;
}

const CHAR16 *
PageFlowTest::Keep (const std::u16string &String)
{
  mTexts.emplace_back (String.begin (), String.end ());
  mTexts.back ().push_back (0);
  return mTexts.back ().data ();
}

std::u16string
PageFlowTest::Text (const CHAR16 *String)
{
  std::u16string Result;

  while ((String != nullptr) && (*String != 0)) {
    Result.push_back ((char16_t)*String++);
  }

  return Result;
}

VOID
PageFlowTest::Tick (UINTN Control, UINT8 Second, std::function<void ()> Before)
{
  mTimes.emplace_back ();
  mTimes.back ().Second = Second;
  mScript.push_back ({UI_EVENT{0, Control, UI_EVENT_TIMER_TICK, (UINTN)&mTimes.back ()}, std::move (Before)});
}

VOID
PageFlowTest::Key (UINTN Control, UINTN Data, std::function<void ()> Before)
{
  mScript.push_back ({UI_EVENT{0, Control, UI_EVENT_KEY, Data}, std::move (Before)});
}

VOID
PageFlowTest::Submit (const std::u16string &Password)
{
  mScript.push_back ({UI_EVENT{0, PROMPT_CONTROL_PASSWORD, UI_EVENT_TEXT_SUBMITTED, (UINTN)Keep (Password)}, nullptr});
}

VOID
PageFlowTest::Activate (UINTN Control)
{
  mScript.push_back ({UI_EVENT{0, Control, UI_EVENT_CONTROL_ACTIVATED, 0}, nullptr});
}

EFI_STATUS
PageFlowTest::RunLoop ()
{
  return mFramework->Pages->RunEventLoop ();
}

WelcomeControls
PageFlowTest::ShowWelcome ()
{
  WelcomeControls Result;
  STAND_IN_PAGE_INFO Page;
  STAND_IN_CONTROL_INFO Control;
  std::vector<UINTN> Texts;

  Ui ().ShowWelcomePage ();
  for (UINTN Index = 0; StandInFindPage (StandInPageAt (Index), &Page); Index++) {
    Result.Page = (!Page.Prompt && (Page.PageId == UI_PAGE_ID)) ? Page.Handle : Result.Page;
  }

  for (UINTN Index = 0; StandInFindControl (Result.Page, StandInControlAt (Result.Page, Index), &Control); Index++) {
    if (Control.Kind == StandInControlImage) {
      Result.Logo = Control.Handle;
    } else if (Control.Kind == StandInControlProgress) {
      Result.Progress = Control.Handle;
    } else if (Control.Kind == StandInControlText) {
      Texts.push_back (Control.Handle);
    }
  }

  //
  // Text controls in the order made: the text line (only with the settings service), message, status.
  //
  if (Texts.size () >= 2) {
    Result.Text = (Texts.size () == 3) ? Texts[0] : 0;
    Result.Message = Texts[Texts.size () - 2];
    Result.Status = Texts.back ();
  }

  return Result;
}

UINTN
PageFlowTest::PromptPage ()
{
  STAND_IN_PAGE_INFO Page;
  UINTN Found = 0;

  for (UINTN Index = 0; StandInFindPage (StandInPageAt (Index), &Page); Index++) {
    Found = Page.Prompt ? Page.Handle : Found;
  }

  return Found;
}

std::u16string
PageFlowTest::ControlText (UINTN Page, UINTN Control)
{
  STAND_IN_TEXT Found{};

  return StandInGetControlText (Page, Control, &Found) ? Text (Found.String) : u"(no control)";
}

EFI_STRING_ID
PageFlowTest::ControlStringId (UINTN Page, UINTN Control)
{
  STAND_IN_TEXT Found{};
  STAND_IN_PAGE_INFO Info;

  if (!StandInGetControlText (Page, Control, &Found) || !StandInFindPage (Page, &Info) || (Found.String != nullptr) ||
      (Found.HiiHandle == nullptr) || (Found.HiiHandle != Info.HiiHandle)) {
    return 0;
  }

  return Found.StringId;
}

bool
PageFlowTest::PageDestroyed (UINTN Page)
{
  STAND_IN_PAGE_INFO Info;

  return StandInFindPage (Page, &Info) && Info.Destroyed;
}

std::string
PageFlowTest::Token (const FlowCall &Call)
{
  const std::vector<UINTN> &Arguments = Call.Arguments;
  STAND_IN_SERVICE_REQUEST Request;

  if ((Call.Name == "SetUiMode") && !Arguments.empty ()) {
    return "SetUiMode(" + std::to_string (Arguments[0]) + ")";
  }

  if ((Call.Name == "SubmitRequest") && StandInGetServiceRequest (Arguments.back (), &Request)) {
    return CompareGuid (&Request.Family, &gPreSetupRequestGuid)
             ? std::string ("PreSetupRequest")
             : "PasswordRequest(" + std::to_string (Request.Request) + ")";
  }

  if ((Arguments.size () >= 5) && (Arguments[2] == PROMPT_CONTROL_PASSWORD)) {
    if ((Call.Name == "SetControlData") && (Arguments[3] == UI_DATA_TEXT) && (Arguments[4] == 0)) {
      return "ClearField";
    }

    if ((Call.Name == "SetControlStyle") && (Arguments[3] == UI_STYLE_FIELD_COLOR) && (Arguments[4] == 0xB7295A)) {
      return "FailColour";
    }
  }

  return Call.Name;
}

std::vector<std::string>
PageFlowTest::Trace (const std::set<std::string> &Wanted) const
{
  std::vector<std::string> Result;

  for (const FlowCall &Call : mLog) {
    std::string Name = Token (Call);
    if (Wanted.count (Name) != 0) {
      Result.push_back (Name);
    }
  }

  return Result;
}

std::vector<STAND_IN_SERVICE_REQUEST>
PageFlowTest::RequestsOf (const EFI_GUID &Family, UINT32 Code)
{
  std::vector<STAND_IN_SERVICE_REQUEST> Result;
  STAND_IN_SERVICE_REQUEST Request;

  for (UINTN Index = 0; StandInGetServiceRequest (Index, &Request); Index++) {
    if (CompareGuid (&Request.Family, &Family) && ((Code == 0) || (Request.Request == Code))) {
      Result.push_back (Request);
    }
  }

  return Result;
}

std::vector<STAND_IN_DELIVERY>
PageFlowTest::Deliveries ()
{
  std::vector<STAND_IN_DELIVERY> Result;
  STAND_IN_DELIVERY Delivery;

  for (UINTN Index = 0; StandInGetDelivery (Index, &Delivery); Index++) {
    Result.push_back (Delivery);
  }

  return Result;
}

STAND_IN_SERVICE_STATE
PageFlowTest::ServiceState ()
{
  STAND_IN_SERVICE_STATE State{};

  StandInGetServiceState (&State);
  return State;
}

std::vector<std::u16string>
PageFlowTest::PromptMessages () const
{
  std::vector<std::u16string> Result;

  for (const ShownPrompt &Prompt : mPrompts) {
    Result.push_back (Prompt.Message);
  }

  return Result;
}

VOID EFIAPI
PageFlowTest::RecordCallback (IN UINTN Kind, IN EFI_STATUS Status)
{
  mCallbacks.push_back ({Kind, Status});
}

VOID EFIAPI
PageFlowTest::Observe (IN VOID *Context,
                       IN STAND_IN_OPERATION Operation,
                       IN CONST UINTN *Arguments,
                       IN UINTN ArgumentCount)
{
  PageFlowTest *Test = (PageFlowTest *)Context;
  FlowCall Call{StandInOperationName (Operation), {}};

  if (ArgumentCount != 0) {
    Call.Arguments.assign (Arguments, Arguments + ArgumentCount);
  }

  //
  // The observer sees a request before the service records it.
  //
  if (Operation == StandInOpSubmitRequest) {
    Call.Arguments.push_back (StandInServiceRequestCount ());
  }

  if ((Operation == StandInOpShowPrompt) && (ArgumentCount >= 5)) {
    Test->mPrompts.push_back ({Text (AsPointer<CHAR16> (Arguments[0])), Text (AsPointer<CHAR16> (Arguments[1])),
                               Text (AsPointer<CHAR16> (Arguments[2])), Arguments[4]});
  }

  Test->mLog.push_back (std::move (Call));
}

BOOLEAN EFIAPI
PageFlowTest::NextEvent (IN VOID *Context, OUT UI_EVENT *Event)
{
  PageFlowTest *Test = (PageFlowTest *)Context;

  if (Test->mScript.empty ()) {
    return FALSE;
  }

  FlowEvent Next = std::move (Test->mScript.front ());
  Test->mScript.pop_front ();
  if (Next.Before) {
    Next.Before ();
  }

  *Event = Next.Event;
  return TRUE;
}

VOID EFIAPI
PageFlowTest::NoteGroup (IN EFI_EVENT Event, IN VOID *Context)
{
  PageFlowTest *Test = (PageFlowTest *)Context;

  Test->mLog.push_back ({(Event == Test->mGroupEvents[0]) ? "SetupEntryGroup" : "PreSetupGroup", {}});
}
