/** @file
  UI_DRIVER_PROTOCOL: the operations of the welcome page, the boot actions and
  the administrator prompt that the platform's boot flow calls.

  The members take no pointer to the protocol.
**/
#ifndef KEST_UI_DRIVER_PROTOCOL_H_
#define KEST_UI_DRIVER_PROTOCOL_H_

#include <Uefi.h>

#define UI_DRIVER_PROTOCOL_GUID                                                                                        \
  {                                                                                                                    \
    0xc2df0b85, 0xb56c, 0x4fec,                                                                                        \
    {                                                                                                                  \
      0xae, 0x5e, 0x8d, 0xfe, 0x18, 0x93, 0xd0, 0x8c                                                                   \
    }                                                                                                                  \
  }

///
/// Password kinds of PromptPassword and IsPasswordInstalled.
///
#define PASSWORD_KIND_OTHER 0
#define PASSWORD_KIND_ADMIN 1

/**
  Completion callback of a password prompt.

  @param[in] Kind    Kind of the password that was prompted for.
  @param[in] Status  Not negative when the password was accepted.
**/
typedef VOID (EFIAPI *PASSWORD_CALLBACK) (IN UINTN Kind, IN EFI_STATUS Status);

typedef VOID (EFIAPI *UI_SHOW_WELCOME_PAGE) (VOID);
typedef VOID (EFIAPI *UI_UPDATE_WELCOME_PROGRESS) (IN CHAR16 *Message, IN UINTN Progress);
typedef VOID (EFIAPI *UI_REFRESH_WELCOME_PAGE) (VOID);
typedef EFI_STATUS (EFIAPI *UI_LAUNCH_SETUP) (VOID);
typedef EFI_STATUS (EFIAPI *UI_LAUNCH_BOOT_MENU) (VOID);
typedef EFI_STATUS (EFIAPI *UI_FINISH_WELCOME_PAGE) (VOID);
typedef EFI_STATUS (EFIAPI *UI_PROMPT_PASSWORD) (IN UINTN Kind, IN PASSWORD_CALLBACK Callback);
typedef EFI_STATUS (EFIAPI *UI_SET_WELCOME_LOGO_FLAG) (VOID);
typedef BOOLEAN (EFIAPI *UI_IS_PASSWORD_INSTALLED) (IN UINTN Kind);

typedef struct {
  UI_SHOW_WELCOME_PAGE ShowWelcomePage;
  UI_UPDATE_WELCOME_PROGRESS UpdateWelcomeProgress;
  UI_REFRESH_WELCOME_PAGE RefreshWelcomePage;
  UI_LAUNCH_SETUP LaunchSetup;
  UI_LAUNCH_BOOT_MENU LaunchBootMenu;
  UI_FINISH_WELCOME_PAGE FinishWelcomePage;
  UI_PROMPT_PASSWORD PromptPassword;
  UI_SET_WELCOME_LOGO_FLAG SetWelcomeLogoFlag;
  UI_IS_PASSWORD_INSTALLED IsPasswordInstalled;
} UI_DRIVER_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, ShowWelcomePage) == 0 * 8, "UI driver slot 0");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, UpdateWelcomeProgress) == 1 * 8, "UI driver slot 1");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, RefreshWelcomePage) == 2 * 8, "UI driver slot 2");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, LaunchSetup) == 3 * 8, "UI driver slot 3");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, LaunchBootMenu) == 4 * 8, "UI driver slot 4");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, FinishWelcomePage) == 5 * 8, "UI driver slot 5");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, PromptPassword) == 6 * 8, "UI driver slot 6");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, SetWelcomeLogoFlag) == 7 * 8, "UI driver slot 7");
STATIC_ASSERT (OFFSET_OF (UI_DRIVER_PROTOCOL, IsPasswordInstalled) == 8 * 8, "UI driver slot 8");
STATIC_ASSERT (sizeof (UI_DRIVER_PROTOCOL) == 9 * 8, "UI driver protocol has nine slots");

extern EFI_GUID gUiDriverProtocolGuid;

#endif
