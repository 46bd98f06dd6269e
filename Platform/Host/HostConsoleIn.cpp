/** @file
  The simulated console input: key queue, ReadKeyStroke(Ex) and key
  notifications.
**/
#include <string>

#include "HostConsole.h"
#include "HostPlatform.h"

namespace {

//
// A protocol member called with another protocol as This is a fault of the
// caller; real firmware would use whatever memory This points at.
//
bool
IsThis (HostPlatform &Platform, const VOID *This, const VOID *Expected, const char *Service)
{
  if (This != Expected) {
    Platform.RecordError (std::string (Service) + ": This is not the console input protocol");
    return false;
  }

  return true;
}

} // namespace

EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *
HostConsole::InEx ()
{
  return mWithInputEx ? &mInEx : nullptr;
}

UINT32
HostConsole::KeyIndex (const EFI_INPUT_KEY &Key)
{
  return ((UINT32)Key.ScanCode << 16) | Key.UnicodeChar;
}

EFI_KEY_DATA
HostConsole::MakeKey (UINT16 ScanCode, CHAR16 UnicodeChar) const
{
  EFI_KEY_DATA Key = {};

  Key.Key.ScanCode = ScanCode;
  Key.Key.UnicodeChar = UnicodeChar;
  Key.KeyState.KeyShiftState = mShiftState;
  Key.KeyState.KeyToggleState = mToggleState;
  return Key;
}

//
// As EDK II's keyboard drivers compare: a state of 0 in the registration
// matches any state, anything else must be equal.
//
bool
HostConsole::StateMatches (const EFI_KEY_DATA &Registered, const EFI_KEY_DATA &Pressed)
{
  if ((Registered.KeyState.KeyShiftState != 0) &&
      (Registered.KeyState.KeyShiftState != Pressed.KeyState.KeyShiftState)) {
    return false;
  }

  return (Registered.KeyState.KeyToggleState == 0) ||
         (Registered.KeyState.KeyToggleState == Pressed.KeyState.KeyToggleState);
}

VOID
HostConsole::PushKey (UINT16 ScanCode, CHAR16 UnicodeChar)
{
  mKeys.push_back (MakeKey (ScanCode, UnicodeChar));
}

VOID
HostConsole::PressKey (UINT16 ScanCode, CHAR16 UnicodeChar)
{
  EFI_KEY_DATA Key = MakeKey (ScanCode, UnicodeChar);

  mKeys.push_back (Key);
  mKeysToNotify.push_back (Key);
  mPlatform.Events ().Signal (mKeyNotifyEvent);
}

UINTN
HostConsole::ActiveKeyRegistrations () const
{
  return mActiveByHandle.size ();
}

EFI_STATUS
HostConsole::ReadKey (EFI_KEY_DATA &KeyData)
{
  if (mKeys.empty ()) {
    return EFI_NOT_READY;
  }

  KeyData = mKeys.front ();
  mKeys.pop_front ();
  return EFI_SUCCESS;
}

VOID EFIAPI
HostConsole::WaitForKeyNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  HostConsole *Console = static_cast<HostConsole *> (Context);

  if (!Console->mKeys.empty ()) {
    Console->mPlatform.Events ().Signal (Event);
  }
}

VOID EFIAPI
HostConsole::KeyNotifyDispatch (IN EFI_EVENT Event, IN VOID *Context)
{
  HostConsole *Console = static_cast<HostConsole *> (Context);

  while (!Console->mKeysToNotify.empty ()) {
    EFI_KEY_DATA Pressed = Console->mKeysToNotify.front ();
    Console->mKeysToNotify.pop_front ();

    //
    // The matches are taken first: a notification may register or unregister keys.
    //
    std::vector<HostKeyRegistration *> Matches;
    auto Range = Console->mActiveByKey.equal_range (KeyIndex (Pressed.Key));
    for (auto Entry = Range.first; Entry != Range.second; ++Entry) {
      if (StateMatches (Entry->second->KeyData, Pressed)) {
        Matches.push_back (Entry->second);
      }
    }

    for (HostKeyRegistration *Registration : Matches) {
      if (Registration->Active) {
        EFI_KEY_DATA Copy = Pressed;
        Registration->Function (&Copy);
      }
    }
  }
}

EFI_STATUS EFIAPI
HostConsole::InResetService (IN EFI_SIMPLE_TEXT_INPUT_PROTOCOL *This, IN BOOLEAN ExtendedVerification)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ConInReset)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mIn, "ConIn->Reset")) {
    return EFI_INVALID_PARAMETER;
  }

  Console.mKeys.clear ();
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::ReadKeyStrokeService (IN EFI_SIMPLE_TEXT_INPUT_PROTOCOL *This, OUT EFI_INPUT_KEY *Key)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ReadKeyStroke)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mIn, "ConIn->ReadKeyStroke") || (Key == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  EFI_KEY_DATA KeyData;
  EFI_STATUS Status = Console.ReadKey (KeyData);
  if (!EFI_ERROR (Status)) {
    *Key = KeyData.Key;
  }

  return Status;
}

EFI_STATUS EFIAPI
HostConsole::InResetExService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This, IN BOOLEAN ExtendedVerification)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ConInReset)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mInEx, "ConInEx->Reset")) {
    return EFI_INVALID_PARAMETER;
  }

  Console.mKeys.clear ();
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::ReadKeyStrokeExService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This, OUT EFI_KEY_DATA *KeyData)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ReadKeyStrokeEx)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mInEx, "ConInEx->ReadKeyStrokeEx") || (KeyData == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  return Console.ReadKey (*KeyData);
}

EFI_STATUS EFIAPI
HostConsole::SetStateService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This, IN EFI_KEY_TOGGLE_STATE *KeyToggleState)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::SetState)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mInEx, "ConInEx->SetState") || (KeyToggleState == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  if ((*KeyToggleState & EFI_TOGGLE_STATE_VALID) == 0) {
    return EFI_UNSUPPORTED;
  }

  Console.mToggleState = *KeyToggleState;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::RegisterKeyNotifyService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                       IN EFI_KEY_DATA *KeyData,
                                       IN EFI_KEY_NOTIFY_FUNCTION KeyNotificationFunction,
                                       OUT VOID **NotifyHandle)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::RegisterKeyNotify)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mInEx, "ConInEx->RegisterKeyNotify") || (KeyData == nullptr) ||
      (KeyNotificationFunction == nullptr) || (NotifyHandle == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // The same key with the same function is one registration, as in EDK II.
  //
  UINT32 Index = KeyIndex (KeyData->Key);
  auto Range = Console.mActiveByKey.equal_range (Index);
  for (auto Entry = Range.first; Entry != Range.second; ++Entry) {
    if ((Entry->second->Function == KeyNotificationFunction) && StateMatches (Entry->second->KeyData, *KeyData)) {
      *NotifyHandle = Entry->second;
      return EFI_SUCCESS;
    }
  }

  Console.mRegistrations.push_back (HostKeyRegistration{*KeyData, KeyNotificationFunction, true});
  HostKeyRegistration *Registration = &Console.mRegistrations.back ();
  Console.mActiveByKey.emplace (Index, Registration);
  Console.mActiveByHandle[Registration] = Registration;
  *NotifyHandle = Registration;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::UnregisterKeyNotifyService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This, IN VOID *NotificationHandle)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostConsole &Console = Platform.Console ();

  if (auto Failure = Platform.Calls ().Enter (HostService::UnregisterKeyNotify)) {
    return *Failure;
  }

  if (!IsThis (Platform, This, &Console.mInEx, "ConInEx->UnregisterKeyNotify")) {
    return EFI_INVALID_PARAMETER;
  }

  auto Found = Console.mActiveByHandle.find (NotificationHandle);
  if (Found == Console.mActiveByHandle.end ()) {
    return EFI_INVALID_PARAMETER;
  }

  HostKeyRegistration *Registration = Found->second;
  Console.mActiveByHandle.erase (Found);
  auto Range = Console.mActiveByKey.equal_range (KeyIndex (Registration->KeyData.Key));
  for (auto Entry = Range.first; Entry != Range.second; ++Entry) {
    if (Entry->second == Registration) {
      Console.mActiveByKey.erase (Entry);
      break;
    }
  }

  Registration->Active = false;
  return EFI_SUCCESS;
}

VOID
HostConsole::InstallInput (EFI_SYSTEM_TABLE &SystemTable, bool WithInputEx)
{
  HostEvents &Events = mPlatform.Events ();

  mWithInputEx = WithInputEx;
  mIn.Reset = InResetService;
  mIn.ReadKeyStroke = ReadKeyStrokeService;
  Events.Create (EVT_NOTIFY_WAIT, TPL_NOTIFY, WaitForKeyNotify, this, nullptr, true, &mIn.WaitForKey);
  mInHandle = mPlatform.Handles ().InstallProtocol (gEfiSimpleTextInProtocolGuid, &mIn);

  if (WithInputEx) {
    mInEx.Reset = InResetExService;
    mInEx.ReadKeyStrokeEx = ReadKeyStrokeExService;
    mInEx.SetState = SetStateService;
    mInEx.RegisterKeyNotify = RegisterKeyNotifyService;
    mInEx.UnregisterKeyNotify = UnregisterKeyNotifyService;
    Events.Create (EVT_NOTIFY_WAIT, TPL_NOTIFY, WaitForKeyNotify, this, nullptr, true, &mInEx.WaitForKeyEx);
    mPlatform.Handles ().InstallProtocol (gEfiSimpleTextInputExProtocolGuid, &mInEx, mInHandle);
  }

  //
  // Keyboard drivers run key notifications from an event at TPL_CALLBACK.
  //
  Events.Create (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, KeyNotifyDispatch, this, nullptr, true, &mKeyNotifyEvent);

  SystemTable.ConsoleInHandle = mInHandle;
  SystemTable.ConIn = &mIn;
}

VOID
HostConsole::Install (EFI_SYSTEM_TABLE &SystemTable, bool WithInputEx)
{
  InstallInput (SystemTable, WithInputEx);
  InstallOutput (SystemTable);
}
