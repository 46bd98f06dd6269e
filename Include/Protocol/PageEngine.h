/** @file
  PAGE_ENGINE_PROTOCOL: creates pages and their controls. Published by another
  driver of the platform; this driver draws nothing itself.

  The engine's operations take no pointer to the protocol. Slots that this
  driver does not call are kept as opaque pointers so that the slot numbers
  stay fixed.
**/
#ifndef KEST_PAGE_ENGINE_PROTOCOL_H_
#define KEST_PAGE_ENGINE_PROTOCOL_H_

#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#define PAGE_ENGINE_PROTOCOL_GUID                                                                                      \
  {                                                                                                                    \
    0xc2a42cd4, 0xde95, 0x4066,                                                                                        \
    {                                                                                                                  \
      0xab, 0x62, 0x32, 0x5e, 0x69, 0x33, 0x8c, 0xf8                                                                   \
    }                                                                                                                  \
  }

///
/// An event delivered by the UI framework to a page's handler.
///
typedef struct {
  UINTN Reserved;  ///< not read by this driver
  UINTN Control;   ///< the control that raised the event
  UINTN EventCode; ///< UI_EVENT_* below
  UINTN Data;      ///< depends on the code
} UI_EVENT;

STATIC_ASSERT (sizeof (UI_EVENT) == 32, "UI event is four words");

#define UI_EVENT_TIMER_TICK 0x61680001U ///< Data: EFI_TIME *
#define UI_EVENT_KEY 0x61680002U        ///< Data: scan code << 16 | character
#define UI_EVENT_CONTROL_ACTIVATED 0x61680006U
#define UI_EVENT_CLOSE 0x6168000AU          ///< written by a handler that ends its page
#define UI_EVENT_TEXT_SUBMITTED 0x61680A00U ///< Data: CHAR16 * text

#define UI_KEY_ENTER 13U
#define UI_KEY_ESCAPE 0x170000U

///
/// Results of a UI_EVENT_HANDLER.
///
#define UI_EVENT_NOT_HANDLED 0U
#define UI_EVENT_HANDLED 1U
#define UI_EVENT_HANDLED_PAGE_CLOSED 2U

typedef UINTN (EFIAPI *UI_EVENT_HANDLER) (IN OUT UI_EVENT *Event);

///
/// Interface of a prompt page, returned by CreatePromptPage.
///
typedef EFI_STATUS (EFIAPI *PROMPT_SHOW) (IN CHAR16 *Title,
                                          IN CHAR16 *Message,
                                          IN CHAR16 *Caption,
                                          IN UINTN Reserved,
                                          IN UINTN MaxLength,
                                          IN UI_EVENT_HANDLER Handler);

typedef struct {
  PROMPT_SHOW ShowPrompt;
} PROMPT_INTERFACE;

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_CREATE_PROMPT_PAGE) (IN UINTN Reserved,
                                                             OUT UINTN *Page,
                                                             OUT PROMPT_INTERFACE **Prompt);

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_CREATE_PAGE) (OUT UINTN *Page,
                                                      IN UINTN PageId,
                                                      IN UINTN Reserved1,
                                                      IN UINTN Reserved2,
                                                      IN UINTN Reserved3,
                                                      IN EFI_HII_HANDLE HiiHandle,
                                                      IN UINT16 ThemeId);

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_DESTROY_PAGE) (IN UINTN Page);

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_CREATE_IMAGE_CONTROL) (IN UINTN Page,
                                                               IN UINTN Container,
                                                               IN EFI_HII_HANDLE HiiHandle,
                                                               IN UINT16 ThemeId,
                                                               IN UINTN Reserved1,
                                                               IN UINTN Reserved2,
                                                               IN UINTN Reserved3,
                                                               IN UI_EVENT_HANDLER Handler,
                                                               OUT UINTN *Control);

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_CREATE_TEXT_CONTROL) (IN UINTN Page,
                                                              IN UINTN Container,
                                                              IN EFI_HII_HANDLE HiiHandle,
                                                              IN EFI_STRING_ID StringId,
                                                              IN UINTN Reserved,
                                                              OUT UINTN *Control);

typedef EFI_STATUS (EFIAPI *PAGE_ENGINE_CREATE_PROGRESS_CONTROL) (IN UINTN Page,
                                                                  IN UINTN Container,
                                                                  IN EFI_HII_HANDLE HiiHandle,
                                                                  IN UINT16 ThemeId,
                                                                  IN UINTN Reserved1,
                                                                  IN UINTN Minimum,
                                                                  IN UINTN Maximum,
                                                                  IN UINTN Reserved2,
                                                                  IN UI_EVENT_HANDLER Handler,
                                                                  OUT UINTN *Control);

typedef struct {
  VOID *Slot0;
  VOID *Slot1;
  VOID *Slot2;
  PAGE_ENGINE_CREATE_PROMPT_PAGE CreatePromptPage; // 3
  VOID *Slot4;
  VOID *Slot5;
  VOID *Slot6;
  PAGE_ENGINE_CREATE_PAGE CreatePage;   // 7
  PAGE_ENGINE_DESTROY_PAGE DestroyPage; // 8
  VOID *Slot9;
  VOID *Slot10;
  VOID *Slot11;
  PAGE_ENGINE_CREATE_IMAGE_CONTROL CreateImageControl; // 12
  VOID *Slot13;
  VOID *Slot14;
  VOID *Slot15;
  VOID *Slot16;
  PAGE_ENGINE_CREATE_TEXT_CONTROL CreateTextControl; // 17
  VOID *Slot18;
  VOID *Slot19;
  VOID *Slot20;
  VOID *Slot21;
  VOID *Slot22;
  VOID *Slot23;
  PAGE_ENGINE_CREATE_PROGRESS_CONTROL CreateProgressControl; // 24
} PAGE_ENGINE_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, CreatePromptPage) == 3 * 8, "page engine slot 3");
STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, CreatePage) == 7 * 8, "page engine slot 7");
STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, DestroyPage) == 8 * 8, "page engine slot 8");
STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, CreateImageControl) == 12 * 8, "page engine slot 12");
STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, CreateTextControl) == 17 * 8, "page engine slot 17");
STATIC_ASSERT (OFFSET_OF (PAGE_ENGINE_PROTOCOL, CreateProgressControl) == 24 * 8, "page engine slot 24");
STATIC_ASSERT (OFFSET_OF (PROMPT_INTERFACE, ShowPrompt) == 0, "prompt slot 0");

///
/// Page and control identifiers used by this driver's pages.
///
#define UI_PAGE_ID 1000
#define UI_PAGE_CONTAINER 1001
#define PROMPT_CONTAINER 1710
#define PROMPT_CONTROL_TEXT_1 1711
#define PROMPT_CONTROL_TEXT_2 1712
#define PROMPT_CONTROL_TEXT_3 1713
#define PROMPT_CONTROL_PASSWORD 1714
#define PROMPT_CONTROL_CANCEL 1715
#define PROMPT_CONTROL_SUBMIT 1716

extern EFI_GUID gPageEngineProtocolGuid;

#endif
