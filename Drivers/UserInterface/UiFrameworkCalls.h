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
