/** @file
  Extended simple text input protocol (EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL).
**/
#ifndef MDE_LITE_SIMPLE_TEXT_IN_EX_H_
#define MDE_LITE_SIMPLE_TEXT_IN_EX_H_

#include <Protocol/SimpleTextIn.h>

#define EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL_GUID                                                                         \
  {                                                                                                                    \
    0xdd9e7534, 0x7762, 0x4698,                                                                                        \
    {                                                                                                                  \
      0x8c, 0x14, 0xf5, 0x85, 0x17, 0xa6, 0x25, 0xaa                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL;

typedef UINT8 EFI_KEY_TOGGLE_STATE;

typedef struct {
  UINT32 KeyShiftState;
  EFI_KEY_TOGGLE_STATE KeyToggleState;
} EFI_KEY_STATE;

typedef struct {
  EFI_INPUT_KEY Key;
  EFI_KEY_STATE KeyState;
} EFI_KEY_DATA;

#define EFI_SHIFT_STATE_VALID 0x80000000
#define EFI_TOGGLE_STATE_VALID 0x80
#define EFI_KEY_STATE_EXPOSED 0x40
#define EFI_SCROLL_LOCK_ACTIVE 0x01
#define EFI_NUM_LOCK_ACTIVE 0x02
#define EFI_CAPS_LOCK_ACTIVE 0x04

typedef EFI_STATUS (EFIAPI *EFI_INPUT_RESET_EX) (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                 IN BOOLEAN ExtendedVerification);

typedef EFI_STATUS (EFIAPI *EFI_INPUT_READ_KEY_EX) (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                    OUT EFI_KEY_DATA *KeyData);

typedef EFI_STATUS (EFIAPI *EFI_SET_STATE) (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                            IN EFI_KEY_TOGGLE_STATE *KeyToggleState);

typedef EFI_STATUS (EFIAPI *EFI_KEY_NOTIFY_FUNCTION) (IN EFI_KEY_DATA *KeyData);

typedef EFI_STATUS (EFIAPI *EFI_REGISTER_KEYSTROKE_NOTIFY) (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                            IN EFI_KEY_DATA *KeyData,
                                                            IN EFI_KEY_NOTIFY_FUNCTION KeyNotificationFunction,
                                                            OUT VOID **NotifyHandle);

typedef EFI_STATUS (EFIAPI *EFI_UNREGISTER_KEYSTROKE_NOTIFY) (IN EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *This,
                                                              IN VOID *NotificationHandle);

struct _EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL {
  EFI_INPUT_RESET_EX Reset;
  EFI_INPUT_READ_KEY_EX ReadKeyStrokeEx;
  EFI_EVENT WaitForKeyEx;
  EFI_SET_STATE SetState;
  EFI_REGISTER_KEYSTROKE_NOTIFY RegisterKeyNotify;
  EFI_UNREGISTER_KEYSTROKE_NOTIFY UnregisterKeyNotify;
};

extern EFI_GUID gEfiSimpleTextInputExProtocolGuid;

#endif
