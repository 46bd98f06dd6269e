/** @file
  Calls into the UI framework, each checked against a missing framework or
  table.
**/
#include "UiFrameworkCalls.h"
#include "UserInterface.h"

STATIC
UI_ATTRIBUTES *
Attributes (VOID)
{
  return (gUiFramework != nullptr) ? gUiFramework->Attributes : nullptr;
}

STATIC
UI_PAGES *
Pages (VOID)
{
  return (gUiFramework != nullptr) ? gUiFramework->Pages : nullptr;
}

STATIC
UI_SERVICES *
Services (VOID)
{
  return (gUiFramework != nullptr) ? gUiFramework->Services : nullptr;
}

/**
  Calls one attribute operation of the framework, when the framework has it.
**/
STATIC
VOID
CallAttribute (IN UI_CONTROL_ATTRIBUTE UI_ATTRIBUTES::*Operation,
               IN UINTN Page,
               IN UINTN Container,
               IN UINTN Control,
               IN UINT32 Tag,
               IN UINTN Value1,
               IN UINTN Value2,
               IN UINTN Value3)
{
  UI_ATTRIBUTES *Table = Attributes ();

  if ((Table != nullptr) && (Table->*Operation != nullptr)) {
    (Table->*Operation) (Page, Container, Control, Tag, Value1, Value2, Value3);
  }
}

VOID
UiSetProperty (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  CallAttribute (&UI_ATTRIBUTES::SetControlProperty, Page, Container, Control, Tag, Value1, Value2, Value3);
}

VOID
UiSetStyle (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  CallAttribute (&UI_ATTRIBUTES::SetControlStyle, Page, Container, Control, Tag, Value1, Value2, Value3);
}

VOID
UiSetData (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  CallAttribute (&UI_ATTRIBUTES::SetControlData, Page, Container, Control, Tag, Value1, Value2, Value3);
}

UINTN
UiGetStyle (IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag)
{
  UI_ATTRIBUTES *Table = Attributes ();
  UINTN Value = 0;

  if ((Table != nullptr) && (Table->GetControlStyle != nullptr)) {
    Table->GetControlStyle (Page, Container, Control, Tag, (UINTN)&Value, 0, 0);
  }

  return Value;
}

VOID
UiGetData (IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN OUT UINTN *Value)
{
  UI_ATTRIBUTES *Table = Attributes ();

  if ((Table != nullptr) && (Table->GetControlData != nullptr)) {
    Table->GetControlData (Page, Container, Control, Tag, (UINTN)Value, 0, 0);
  }
}

VOID
UiSetAttributes (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN CONST UI_CONTROL_ATTRIBUTE_VALUE *Table, IN UINTN Count)
{
  for (UINTN Index = 0; Index < Count; Index++) {
    CONST UI_CONTROL_ATTRIBUTE_VALUE *Entry = &Table[Index];

    switch (UI_TAG_FAMILY (Entry->Tag)) {
      case UI_FAMILY_PROPERTY:
        UiSetProperty (Page, Container, Control, Entry->Tag, Entry->Value1, Entry->Value2, Entry->Value3);
        break;
      case UI_FAMILY_STYLE:
        UiSetStyle (Page, Container, Control, Entry->Tag, Entry->Value1, Entry->Value2, Entry->Value3);
        break;
      default:
        UiSetData (Page, Container, Control, Entry->Tag, Entry->Value1, Entry->Value2, Entry->Value3);
        break;
    }
  }
}

VOID
UiRefreshPage (IN UINTN Page)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->RefreshPage != nullptr)) {
    Table->RefreshPage (Page);
  }
}

VOID
UiDisplayPage (IN UINTN Page)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->DisplayPage != nullptr)) {
    Table->DisplayPage (Page, 0);
  }
}

VOID
UiExitEventLoop (VOID)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->ExitEventLoop != nullptr)) {
    Table->ExitEventLoop ();
  }
}

VOID
UiRunEventLoop (VOID)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->RunEventLoop != nullptr)) {
    Table->RunEventLoop ();
  }
}

UINTN
UiGetActivePage (VOID)
{
  UI_PAGES *Table = Pages ();
  UINTN Page = 0;

  if ((Table != nullptr) && (Table->GetActivePage != nullptr)) {
    Table->GetActivePage (&Page);
  }

  return Page;
}

VOID
UiSetActivePage (IN UINTN Page)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->SetActivePage != nullptr)) {
    Table->SetActivePage (Page);
  }
}

UI_EVENT_HANDLER
UiGetEventHandler (VOID)
{
  UI_PAGES *Table = Pages ();
  UI_EVENT_HANDLER Handler = nullptr;

  if ((Table != nullptr) && (Table->GetEventHandler != nullptr)) {
    Table->GetEventHandler (&Handler);
  }

  return Handler;
}

VOID
UiSetEventHandler (IN UI_EVENT_HANDLER Handler)
{
  UI_PAGES *Table = Pages ();

  if ((Table != nullptr) && (Table->SetEventHandler != nullptr)) {
    Table->SetEventHandler (Handler);
  }
}

VOID
UiSetUiMode (IN UINTN Mode)
{
  UI_SERVICES *Table = Services ();

  if ((Table != nullptr) && (Table->SetUiMode != nullptr)) {
    Table->SetUiMode (Mode);
  }
}

VOID
UiEndUiSession (VOID)
{
  UI_SERVICES *Table = Services ();

  if ((Table != nullptr) && (Table->Session != nullptr) && (Table->Session->EndUiSession != nullptr)) {
    Table->Session->EndUiSession ();
  }
}

VOID
UiResetUiState (VOID)
{
  UI_SERVICES *Table = Services ();

  if ((Table != nullptr) && (Table->State != nullptr) && (Table->State->ResetUiState != nullptr)) {
    Table->State->ResetUiState (0);
  }
}

CHAR16 *
UiGetString (IN EFI_STRING_ID Id)
{
  UI_SERVICES *Table = Services ();
  CHAR16 *String = nullptr;

  if ((Table != nullptr) && (Table->Strings != nullptr) && (Table->Strings->GetString != nullptr)) {
    if (EFI_ERROR (Table->Strings->GetString (0, gHiiHandle, Id, &String))) {
      return nullptr;
    }
  }

  return String;
}
