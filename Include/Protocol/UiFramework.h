/** @file
  UI_FRAMEWORK_PROTOCOL: services, control attributes, pages and events.
  Published by another driver of the platform.

  The protocol is three table pointers. Slots that this driver does not call
  are kept as opaque pointers so that the slot numbers stay fixed. The tables'
  operations take no pointer to the protocol.
**/
#ifndef KEST_UI_FRAMEWORK_PROTOCOL_H_
#define KEST_UI_FRAMEWORK_PROTOCOL_H_

#include <Protocol/PageEngine.h>
#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#define UI_FRAMEWORK_PROTOCOL_GUID                                                                                     \
  {                                                                                                                    \
    0x13bec3cc, 0xbc05, 0x45db,                                                                                        \
    {                                                                                                                  \
      0x8f, 0x23, 0x10, 0x4b, 0x28, 0xfc, 0x00, 0xbc                                                                   \
    }                                                                                                                  \
  }

//
// Services: session, UI state, strings, images and the UI mode.
//
typedef struct _UI_SERVICES UI_SERVICES;

typedef EFI_STATUS (EFIAPI *UI_SESSION_REQUEST) (
  IN UI_SERVICES *Services, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4);
typedef EFI_STATUS (EFIAPI *UI_END_SESSION) (VOID);

typedef struct {
  VOID *Slot0;
  VOID *Slot1;
  VOID *Slot2;
  UI_SESSION_REQUEST SessionRequest; // 3
  UI_END_SESSION EndUiSession;       // 4
} UI_SESSION_TABLE;

typedef EFI_STATUS (EFIAPI *UI_RESET_STATE) (IN UINTN Reserved);

typedef struct {
  VOID *Slot[11];
  UI_RESET_STATE ResetUiState; // 11
} UI_STATE_TABLE;

typedef EFI_STATUS (EFIAPI *UI_GET_STRING) (IN UINTN Reserved,
                                            IN EFI_HII_HANDLE HiiHandle,
                                            IN EFI_STRING_ID StringId,
                                            OUT CHAR16 **String);

typedef struct {
  UI_GET_STRING GetString; // 0
} UI_STRING_TABLE;

typedef EFI_STATUS (EFIAPI *UI_ADD_IMAGE_DATA) (IN OUT UINTN *ImageCell,
                                                IN CHAR16 *FileName,
                                                IN VOID *Data,
                                                IN UINTN Size);

typedef EFI_STATUS (EFIAPI *UI_GET_IMAGE) (IN CHAR16 *FileName, IN OUT UINTN *ImageCell);

typedef struct {
  VOID *Slot[4];
  UI_ADD_IMAGE_DATA AddImageData; // 4
  UI_GET_IMAGE GetImage;          // 5
} UI_IMAGE_TABLE;

typedef EFI_STATUS (EFIAPI *UI_SET_MODE) (IN UINTN Mode);

struct _UI_SERVICES {
  VOID *Slot0;
  UI_SESSION_TABLE *Session; // 1
  UI_STATE_TABLE *State;     // 2
  UI_STRING_TABLE *Strings;  // 3
  UI_IMAGE_TABLE *Images;    // 4
  VOID *Slot5;
  VOID *Slot6;
  UI_SET_MODE SetUiMode; // 7
};

//
// Control attributes: (Page, Container, Control, Tag, V1, V2, V3).
//
typedef EFI_STATUS (EFIAPI *UI_CONTROL_ATTRIBUTE) (IN UINTN Page,
                                                   IN UINTN Container,
                                                   IN UINTN Control,
                                                   IN UINT32 Tag,
                                                   IN UINTN Value1,
                                                   IN UINTN Value2,
                                                   IN UINTN Value3);

typedef struct {
  VOID *Slot0;
  UI_CONTROL_ATTRIBUTE SetControlProperty; // 1
  UI_CONTROL_ATTRIBUTE GetControlStyle;    // 2, Value1 is an out cell
  UI_CONTROL_ATTRIBUTE SetControlStyle;    // 3
  UI_CONTROL_ATTRIBUTE GetControlData;     // 4, Value1 is an out cell
  UI_CONTROL_ATTRIBUTE SetControlData;     // 5
} UI_ATTRIBUTES;

//
// Attribute tags: the high half names the family.
//
#define UI_PROPERTY_VISIBLE 0x70720001U ///< V1 1 shows, 0 hides
#define UI_PROPERTY_SIZE 0x70720008U    ///< (4, width, height)
#define UI_PROPERTY_MARGIN 0x7072000CU
#define UI_PROPERTY_LOGO_FLAG 0x70720011U
#define UI_PROPERTY_IMAGE_SCALE 0x70720013U ///< (2, 100, 100) before an image is set
#define UI_STYLE_LAYOUT 0x73740000U
#define UI_STYLE_ALIGN 0x73740001U
#define UI_STYLE_FLOW 0x73740003U
#define UI_STYLE_PAGE 0x73740005U       ///< page-wide: container 0, Control the page
#define UI_STYLE_IMAGE 0x73740007U      ///< V1 the image value
#define UI_STYLE_TEXT_COLOR 0x73740011U ///< V1 0xRRGGBB
#define UI_STYLE_FONT 0x7374001DU
#define UI_STYLE_FIELD_COLOR 0x7374001FU ///< V1 0xRRGGBB
#define UI_STYLE_FIELD_FONT 0x73740021U
#define UI_STYLE_IMAGE_FIT 0x73740023U
#define UI_STYLE_IMAGE_RECORD 0x73740025U ///< read: UI_IMAGE_RECORD *
#define UI_DATA_TEXT 0x64611A00U          ///< V1 string, or V1 0 with V2 HiiHandle and V3 string id
#define UI_DATA_PROGRESS_MINIMUM 0x64611200U
#define UI_DATA_PROGRESS_MAXIMUM 0x64611201U
#define UI_DATA_PROGRESS_VALUE 0x64611202U

///
/// What GetControlStyle(UI_STYLE_IMAGE_RECORD) gives for an image control.
///
typedef struct {
  UINTN X;
  UINTN Y;
  UINTN Width;
  UINTN Height;
  VOID *BltBuffer;
} UI_IMAGE_RECORD;

//
// Pages and events.
//
typedef EFI_STATUS (EFIAPI *UI_REFRESH_PAGE) (IN UINTN Page);
typedef EFI_STATUS (EFIAPI *UI_GET_ACTIVE_PAGE) (OUT UINTN *Page);
typedef EFI_STATUS (EFIAPI *UI_SET_ACTIVE_PAGE) (IN UINTN Page);
typedef EFI_STATUS (EFIAPI *UI_SET_EVENT_HANDLER) (IN UI_EVENT_HANDLER Handler);
typedef EFI_STATUS (EFIAPI *UI_GET_EVENT_HANDLER) (OUT UI_EVENT_HANDLER *Handler);
typedef EFI_STATUS (EFIAPI *UI_RUN_EVENT_LOOP) (VOID);
typedef EFI_STATUS (EFIAPI *UI_EXIT_EVENT_LOOP) (VOID);
typedef EFI_STATUS (EFIAPI *UI_ADD_IMAGE_PACKAGE) (IN VOID *Package,
                                                   IN UINTN Size,
                                                   IN EFI_GUID *Guid,
                                                   IN UINTN Reserved);
typedef EFI_STATUS (EFIAPI *UI_DISPLAY_PAGE) (IN UINTN Page, IN UINTN Reserved);

typedef struct {
  VOID *Slot0;
  VOID *Slot1;
  UI_REFRESH_PAGE RefreshPage; // 2
  VOID *Slot3;
  VOID *Slot4;
  UI_GET_ACTIVE_PAGE GetActivePage;     // 5
  UI_SET_ACTIVE_PAGE SetActivePage;     // 6
  UI_SET_EVENT_HANDLER SetEventHandler; // 7
  UI_GET_EVENT_HANDLER GetEventHandler; // 8
  UI_RUN_EVENT_LOOP RunEventLoop;       // 9
  UI_EXIT_EVENT_LOOP ExitEventLoop;     // 10
  VOID *Slot11;
  UI_ADD_IMAGE_PACKAGE AddImagePackage; // 12
  VOID *Slot13;
  VOID *Slot14;
  VOID *Slot15;
  VOID *Slot16;
  UI_DISPLAY_PAGE DisplayPage; // 17
} UI_PAGES;

typedef struct {
  UI_SERVICES *Services;
  UI_ATTRIBUTES *Attributes;
  UI_PAGES *Pages;
} UI_FRAMEWORK_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (UI_SESSION_TABLE, SessionRequest) == 3 * 8, "session slot 3");
STATIC_ASSERT (OFFSET_OF (UI_SESSION_TABLE, EndUiSession) == 4 * 8, "session slot 4");
STATIC_ASSERT (OFFSET_OF (UI_STATE_TABLE, ResetUiState) == 11 * 8, "state slot 11");
STATIC_ASSERT (OFFSET_OF (UI_STRING_TABLE, GetString) == 0, "strings slot 0");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_TABLE, AddImageData) == 4 * 8, "images slot 4");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_TABLE, GetImage) == 5 * 8, "images slot 5");
STATIC_ASSERT (OFFSET_OF (UI_SERVICES, Session) == 1 * 8, "services slot 1");
STATIC_ASSERT (OFFSET_OF (UI_SERVICES, State) == 2 * 8, "services slot 2");
STATIC_ASSERT (OFFSET_OF (UI_SERVICES, Strings) == 3 * 8, "services slot 3");
STATIC_ASSERT (OFFSET_OF (UI_SERVICES, Images) == 4 * 8, "services slot 4");
STATIC_ASSERT (OFFSET_OF (UI_SERVICES, SetUiMode) == 7 * 8, "services slot 7");
STATIC_ASSERT (OFFSET_OF (UI_ATTRIBUTES, SetControlProperty) == 1 * 8, "attributes slot 1");
STATIC_ASSERT (OFFSET_OF (UI_ATTRIBUTES, GetControlStyle) == 2 * 8, "attributes slot 2");
STATIC_ASSERT (OFFSET_OF (UI_ATTRIBUTES, SetControlStyle) == 3 * 8, "attributes slot 3");
STATIC_ASSERT (OFFSET_OF (UI_ATTRIBUTES, GetControlData) == 4 * 8, "attributes slot 4");
STATIC_ASSERT (OFFSET_OF (UI_ATTRIBUTES, SetControlData) == 5 * 8, "attributes slot 5");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, RefreshPage) == 2 * 8, "pages slot 2");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, GetActivePage) == 5 * 8, "pages slot 5");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, SetActivePage) == 6 * 8, "pages slot 6");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, SetEventHandler) == 7 * 8, "pages slot 7");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, GetEventHandler) == 8 * 8, "pages slot 8");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, RunEventLoop) == 9 * 8, "pages slot 9");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, ExitEventLoop) == 10 * 8, "pages slot 10");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, AddImagePackage) == 12 * 8, "pages slot 12");
STATIC_ASSERT (OFFSET_OF (UI_PAGES, DisplayPage) == 17 * 8, "pages slot 17");
STATIC_ASSERT (sizeof (UI_FRAMEWORK_PROTOCOL) == 3 * 8, "framework is three table pointers");
STATIC_ASSERT (sizeof (UI_IMAGE_RECORD) == 5 * 8, "image record is five words");

extern EFI_GUID gUiFrameworkProtocolGuid;

#endif
