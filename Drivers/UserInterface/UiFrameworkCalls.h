/** @file
  Calls into the UI framework that every page makes.

  The framework may be absent (it is located on its own notification) and is
  trusted for nothing else, so each call checks the pointer and table it goes
  through and turns into no call when one is missing. Results that the pages
  ignore are not returned.
**/
#ifndef UI_FRAMEWORK_CALLS_H_
#define UI_FRAMEWORK_CALLS_H_

#include <Protocol/UiFramework.h>
#include <Uefi.h>

/** SetControlProperty (Page, Container, Control, Tag, V1, V2, V3). **/
VOID UiSetProperty (IN UINTN Page,
                    IN UINTN Container,
                    IN UINTN Control,
                    IN UINT32 Tag,
                    IN UINTN Value1,
                    IN UINTN Value2 = 0,
                    IN UINTN Value3 = 0);

/** SetControlStyle (Page, Container, Control, Tag, V1, V2, V3). **/
VOID UiSetStyle (IN UINTN Page,
                 IN UINTN Container,
                 IN UINTN Control,
                 IN UINT32 Tag,
                 IN UINTN Value1,
                 IN UINTN Value2 = 0,
                 IN UINTN Value3 = 0);

/** SetControlData (Page, Container, Control, Tag, V1, V2, V3). **/
VOID UiSetData (IN UINTN Page,
                IN UINTN Container,
                IN UINTN Control,
                IN UINT32 Tag,
                IN UINTN Value1,
                IN UINTN Value2 = 0,
                IN UINTN Value3 = 0);

/** GetControlStyle with V1 the out cell: @return what the framework wrote, 0 when nothing. **/
UINTN
UiGetStyle (IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag);

/** GetControlData with V1 the out cell, which keeps its value when nothing is written. **/
VOID UiGetData (IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN OUT UINTN *Value);

/**
  The framework passes pointers in UINTN words (event data, attribute out
  cells).

  @return Value as the pointer it carries.
**/
template <typename TYPE>
inline TYPE *
UiPointer (UINTN Value)
{
  return (TYPE *)Value; // NOLINT(performance-no-int-to-ptr): a pointer by the framework's contract
}

///
/// One attribute of a control: its tag names the family, and so the operation
/// (property, style or data) that sets it.
///
typedef struct {
  UINT32 Tag;
  UINTN Value1;
  UINTN Value2;
  UINTN Value3;
} UI_CONTROL_ATTRIBUTE_VALUE;

#define UI_TAG_FAMILY(Tag) ((Tag) >> 16)
#define UI_FAMILY_PROPERTY 0x7072U
#define UI_FAMILY_STYLE 0x7374U
#define UI_FAMILY_DATA 0x6461U

/** @return TRUE when every tag of the table belongs to a family that can be set. **/
template <UINTN N>
constexpr bool
UiAttributesSettable (const UI_CONTROL_ATTRIBUTE_VALUE (&Table)[N])
{
  for (UINTN Index = 0; Index < N; Index++) {
    UINT32 Family = UI_TAG_FAMILY (Table[Index].Tag);
    if ((Family != UI_FAMILY_PROPERTY) && (Family != UI_FAMILY_STYLE) && (Family != UI_FAMILY_DATA)) {
      return false;
    }
  }

  return true;
}

/**
  Sets a control's attributes in table order, each through the operation of
  its tag's family.
**/
VOID UiSetAttributes (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN CONST UI_CONTROL_ATTRIBUTE_VALUE *Table, IN UINTN Count);

VOID UiRefreshPage (IN UINTN Page);

VOID UiDisplayPage (IN UINTN Page);

VOID UiExitEventLoop (VOID);

VOID UiRunEventLoop (VOID);

UINTN
UiGetActivePage (VOID);

VOID UiSetActivePage (IN UINTN Page);

UI_EVENT_HANDLER
UiGetEventHandler (VOID);

VOID UiSetEventHandler (IN UI_EVENT_HANDLER Handler);

VOID UiSetUiMode (IN UINTN Mode);

VOID UiEndUiSession (VOID);

VOID UiResetUiState (VOID);

/** @return the driver's string Id through the framework (not to be freed), or null. **/
CHAR16 *UiGetString (IN EFI_STRING_ID Id);

#endif
