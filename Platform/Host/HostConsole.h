/** @file
  The simulated console.

  ConIn: a handle with EFI_SIMPLE_TEXT_INPUT_PROTOCOL and, unless the platform
  options omit it, EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL, reading from one key
  queue. PushKey only queues a key; PressKey also delivers it to the matching
  key notifications, from an event at TPL_CALLBACK as keyboard drivers do (at
  once when the caller is below TPL_CALLBACK).

  A registration matches a key when scan code and character are equal and,
  as in EDK II's keyboard drivers, its shift and toggle states are either 0 or
  equal to the keyboard's. The keyboard reports the toggle state 0x80
  (EFI_TOGGLE_STATE_VALID) and the shift state EFI_SHIFT_STATE_VALID unless a
  test sets others; OVMF's PS/2 keyboard reports 0xC0, which matches no
  registration that asks for 0x80.

  ConOut: a handle with EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL (80x25, mode 0) that
  records SetAttribute values and OutputString text. StdErr is the same.
**/
#ifndef HOST_CONSOLE_H_
#define HOST_CONSOLE_H_

#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include <Protocol/SimpleTextIn.h>
#include <Protocol/SimpleTextInEx.h>
#include <Protocol/SimpleTextOut.h>
#include <Uefi.h>

class HostPlatform;

///
/// One RegisterKeyNotify registration; its address is the notify handle.
///
struct HostKeyRegistration {
  EFI_KEY_DATA KeyData;
  EFI_KEY_NOTIFY_FUNCTION Function;
  bool Active; ///< false once unregistered
};

class HostConsole {
public:
  explicit HostConsole (HostPlatform &Platform) : mPlatform (Platform)
  {}

  HostConsole (const HostConsole &) = delete;
  HostConsole &operator= (const HostConsole &) = delete;

  EFI_HANDLE
  InHandle () const
  {
    return mInHandle;
  }

  EFI_HANDLE
  OutHandle () const
  {
    return mOutHandle;
  }

  /** @return the extended input protocol, or null when the platform omits it. **/
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *InEx ();

  /** Queues a key for ReadKeyStroke(Ex), without key notifications. **/
  VOID PushKey (UINT16 ScanCode, CHAR16 UnicodeChar);

  /** Queues a key and delivers it to every matching active key notification. **/
  VOID PressKey (UINT16 ScanCode, CHAR16 UnicodeChar);

  /** @return how many keys wait to be read. **/
  UINTN
  PendingKeys () const
  {
    return mKeys.size ();
  }

  VOID
  SetToggleState (EFI_KEY_TOGGLE_STATE State)
  {
    mToggleState = State;
  }

  EFI_KEY_TOGGLE_STATE
  ToggleState () const
  {
    return mToggleState;
  }

  VOID
  SetShiftState (UINT32 State)
  {
    mShiftState = State;
  }

  /** @return every key registration in the order made (unregistered ones inactive). **/
  const std::deque<HostKeyRegistration> &
  KeyRegistrations () const
  {
    return mRegistrations;
  }

  /** @return the registrations that are still active. **/
  UINTN ActiveKeyRegistrations () const;

  /** @return every SetAttribute value, in order. **/
  const std::vector<UINTN> &
  Attributes () const
  {
    return mAttributes;
  }

  /** @return all OutputString text so far. **/
  const std::u16string &
  Output () const
  {
    return mOutput;
  }

  //
  // Used by the platform.
  //

  /** Makes both handles and sets the console fields of SystemTable. **/
  VOID Install (EFI_SYSTEM_TABLE &SystemTable, bool WithInputEx);

private:
  // Input (HostConsoleIn.cpp)
  static EFI_STATUS EFIAPI InResetService (IN EFI_SIMPLE_TEXT_INPUT_PROTOCOL *This, IN BOOLEAN ExtendedVerification);
  static EFI_STATUS EFIAPI ReadKeyStrokeService (IN EFI_SIMPLE_TEXT_INPUT_PROTOCOL *This, OUT EFI_INPUT_KEY *Key);
  static EFI_STATUS EFIAPI InResetExService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                             IN BOOLEAN ExtendedVerification);
  static EFI_STATUS EFIAPI ReadKeyStrokeExService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                   OUT EFI_KEY_DATA *KeyData);
  static EFI_STATUS EFIAPI SetStateService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                            IN EFI_KEY_TOGGLE_STATE *KeyToggleState);
  static EFI_STATUS EFIAPI RegisterKeyNotifyService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                     IN EFI_KEY_DATA *KeyData,
                                                     IN EFI_KEY_NOTIFY_FUNCTION KeyNotificationFunction,
                                                     OUT VOID **NotifyHandle);
  static EFI_STATUS EFIAPI UnregisterKeyNotifyService (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                       IN VOID *NotificationHandle);
  static VOID EFIAPI WaitForKeyNotify (IN EFI_EVENT Event, IN VOID *Context);
  static VOID EFIAPI KeyNotifyDispatch (IN EFI_EVENT Event, IN VOID *Context);

  VOID InstallInput (EFI_SYSTEM_TABLE &SystemTable, bool WithInputEx);
  EFI_STATUS ReadKey (EFI_KEY_DATA &KeyData);
  static bool StateMatches (const EFI_KEY_DATA &Registered, const EFI_KEY_DATA &Pressed);
  static UINT32 KeyIndex (const EFI_INPUT_KEY &Key);
  EFI_KEY_DATA MakeKey (UINT16 ScanCode, CHAR16 UnicodeChar) const;

  // Output (HostConsoleOut.cpp)
  static EFI_STATUS EFIAPI OutResetService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN BOOLEAN ExtendedVerification);
  static EFI_STATUS EFIAPI OutputStringService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN CHAR16 *String);
  static EFI_STATUS EFIAPI TestStringService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN CHAR16 *String);
  static EFI_STATUS EFIAPI QueryModeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This,
                                             IN UINTN ModeNumber,
                                             OUT UINTN *Columns,
                                             OUT UINTN *Rows);
  static EFI_STATUS EFIAPI SetModeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN UINTN ModeNumber);
  static EFI_STATUS EFIAPI SetAttributeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN UINTN Attribute);
  static EFI_STATUS EFIAPI ClearScreenService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This);
  static EFI_STATUS EFIAPI SetCursorPositionService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This,
                                                     IN UINTN Column,
                                                     IN UINTN Row);
  static EFI_STATUS EFIAPI EnableCursorService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN BOOLEAN Visible);

  VOID InstallOutput (EFI_SYSTEM_TABLE &SystemTable);

  HostPlatform &mPlatform;

  EFI_HANDLE mInHandle = nullptr;
  EFI_SIMPLE_TEXT_INPUT_PROTOCOL mIn = {};
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL mInEx = {};
  bool mWithInputEx = false;
  std::deque<EFI_KEY_DATA> mKeys;
  std::deque<EFI_KEY_DATA> mKeysToNotify; ///< pressed keys whose notifications have not run yet
  EFI_EVENT mKeyNotifyEvent = nullptr;
  EFI_KEY_TOGGLE_STATE mToggleState = EFI_TOGGLE_STATE_VALID;
  UINT32 mShiftState = EFI_SHIFT_STATE_VALID;
  std::deque<HostKeyRegistration> mRegistrations;            ///< stable addresses
  std::multimap<UINT32, HostKeyRegistration *> mActiveByKey; ///< by KeyIndex, in registration order
  std::unordered_map<const VOID *, HostKeyRegistration *> mActiveByHandle;

  EFI_HANDLE mOutHandle = nullptr;
  EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL mOut = {};
  EFI_SIMPLE_TEXT_OUTPUT_MODE mOutMode = {};
  std::vector<UINTN> mAttributes;
  std::u16string mOutput;
};

#endif
