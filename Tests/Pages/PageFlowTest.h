/** @file
  Fixture of the page flow tests: one simulated boot with the host HII
  database, the page engine, UI framework and service stand-ins, and the
  driver started on its own image. Tests act as the platform's boot flow does,
  through the installed UI_DRIVER_PROTOCOL, and check what the pages, the
  services and the firmware received.

  Every stand-in call and every signal of the Setup-entry and pre-Setup groups
  goes into one ordered log; event loops take their events from the test's
  script. TearDown unloads the driver and removes every stand-in, so the
  platform's check then proves that no pool buffer is left.
**/
#ifndef PAGE_FLOW_TEST_H_
#define PAGE_FLOW_TEST_H_

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "PlatformTest.h"

#include <Protocol/PageEngine.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/Settings.h>
#include <Protocol/UiDriver.h>
#include <Protocol/UiFramework.h>
#include <StandIns/PageEngineStandIn.h>
#include <StandIns/ServiceStandIns.h>
#include <StandIns/StandInCalls.h>
#include <StandIns/UiFrameworkStandIn.h>

extern "C" EFI_STATUS EFIAPI _ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

///
/// The services a boot installs; a test leaves out what it wants missing.
///
enum FlowService : UINT32 {
  WithSettings = 1U << 0,
  WithServiceRequest = 1U << 1,
  WithBootMenu = 1U << 2,
  WithSetupState = 1U << 3,
  WithDiagnostics = 1U << 4,
  WithPcd = 1U << 5,
  WithBootLogo = 1U << 6,
  WithSmbios = 1U << 7,
  WithPersonality = 1U << 8,
  AllServices = (1U << 9) - 1
};

///
/// A stand-in operation by its name, or a group signal ("SetupEntryGroup", "PreSetupGroup").
///
struct FlowCall {
  std::string Name;
  std::vector<UINTN> Arguments; ///< SubmitRequest: the request's number in the service's records last
};

struct ShownPrompt {
  std::u16string Title;
  std::u16string Message;
  std::u16string Caption;
  UINTN MaxLength;
};

///
/// The welcome page and its controls; Text is 0 when the page has no text line.
///
struct WelcomeControls {
  UINTN Page = 0;
  UINTN Logo = 0;
  UINTN Progress = 0;
  UINTN Text = 0;
  UINTN Message = 0;
  UINTN Status = 0;
};

struct FlowEvent {
  UI_EVENT Event;
  std::function<void ()> Before; ///< runs when the loop takes the event
};

/** @return the name of a parameterised case, from its Name. **/
template <typename CASE>
std::string
CaseName (const ::testing::TestParamInfo<CASE> &Info)
{
  return Info.param.Name;
}

extern const std::u16string gFirstPasswordMessage;
extern const std::u16string gRetryPasswordMessage;
extern const std::u16string gShutdownMessage;

class PageFlowTest : public PlatformTest {
public:
  //
  // What the services answer; public, for test parameters.
  //
  static VOID SetBytes (UINTN Item, const std::string &Bytes); ///< exactly these bytes
  static VOID SetText (UINTN Item, const std::string &Text);   ///< the text and its terminator
  static VOID SetByte (UINTN Item, UINT8 Value);
  static STAND_IN_PASSWORD Record (UINT64 Kind, UINT64 State, const CHAR16 *Password, UINT64 MaxLength = 32);
  static VOID SetPasswords (const std::vector<STAND_IN_PASSWORD> &Records);
  static std::vector<UINT8> SmbiosSystemRecord (UINT8 SerialNumber, const std::vector<std::string> &Strings);

protected:
  void SetUp () override;
  void TearDown () override;

  /** Installs the chosen services, starts the driver and finds its protocol. **/
  ::testing::AssertionResult Boot (UINT32 Services = AllServices);

  /** Unloads the driver and loads it again on a new image, the services staying as they are. **/
  ::testing::AssertionResult Reload ();

  UI_DRIVER_PROTOCOL &
  Ui ()
  {
    return *mUiDriver;
  }

  /** @return the driver's image handle (0 before Boot), where it installs its protocols. **/
  EFI_HANDLE
  ImageHandle () const
  {
    return mImage;
  }

  /** @return a terminated CHAR16 copy of Text that lives as long as the test. **/
  const CHAR16 *Keep (const std::u16string &Text);
  static std::u16string Text (const CHAR16 *String);

  //
  // The script of the event loops.
  //
  VOID Tick (UINTN Control, UINT8 Second, std::function<void ()> Before = nullptr);
  VOID Key (UINTN Control, UINTN Data, std::function<void ()> Before = nullptr);
  VOID Submit (const std::u16string &Password);
  VOID Activate (UINTN Control);
  EFI_STATUS RunLoop ();

  //
  // The pages as the stand-ins keep them.
  //
  WelcomeControls ShowWelcome ();
  static UINTN PromptPage ();
  static std::u16string ControlText (UINTN Page, UINTN Control);
  static EFI_STRING_ID ControlStringId (UINTN Page, UINTN Control); ///< 0 unless a string of the page's package
  static bool PageDestroyed (UINTN Page);

  //
  // The log and the records of the stand-ins.
  //
  /**
    @return the log as tokens, only those in Wanted: the operation's name,
    "SetUiMode(n)", "PreSetupRequest" and "PasswordRequest(n)" for
    SubmitRequest, "ClearField" and "FailColour" for the password field, and
    the group signals.
  **/
  std::vector<std::string> Trace (const std::set<std::string> &Wanted) const;
  static std::vector<STAND_IN_SERVICE_REQUEST> RequestsOf (const EFI_GUID &Family, UINT32 Code = 0); ///< 0: any code
  static std::vector<STAND_IN_DELIVERY> Deliveries ();
  static STAND_IN_SERVICE_STATE ServiceState ();
  std::vector<std::u16string> PromptMessages () const;

  std::vector<ShownPrompt> mPrompts;
  std::vector<FlowCall> mLog;
  std::deque<FlowEvent> mScript;
  UI_FRAMEWORK_PROTOCOL *mFramework = nullptr;

  //
  // The completion callback that tests hand to PromptPassword.
  //
  struct CallbackCall {
    UINTN Kind;
    EFI_STATUS Status;
  };

  static VOID EFIAPI RecordCallback (IN UINTN Kind, IN EFI_STATUS Status);
  static std::vector<CallbackCall> mCallbacks;

private:
  static VOID EFIAPI Observe (IN VOID *Context,
                              IN STAND_IN_OPERATION Operation,
                              IN CONST UINTN *Arguments,
                              IN UINTN ArgumentCount);
  static BOOLEAN EFIAPI NextEvent (IN VOID *Context, OUT UI_EVENT *Event);
  static VOID EFIAPI NoteGroup (IN EFI_EVENT Event, IN VOID *Context);
  static std::string Token (const FlowCall &Call);
  ::testing::AssertionResult StartImage ();

  EFI_HANDLE mImage = nullptr;
  UI_DRIVER_PROTOCOL *mUiDriver = nullptr;
  EFI_HANDLE mEngineHandle = nullptr;
  EFI_HANDLE mFrameworkHandle = nullptr;
  EFI_HANDLE mServiceHandles[9] = {};
  EFI_EVENT mGroupEvents[2] = {};
  std::deque<std::vector<CHAR16>> mTexts;
  std::deque<EFI_TIME> mTimes;
};

#endif
