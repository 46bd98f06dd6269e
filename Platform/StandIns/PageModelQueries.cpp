/** @file
  Read-only queries of the page model for tests and embedders. They see
  destroyed pages too, until the page engine is uninstalled.
**/
#include "StandInInternal.h"

STATIC
STAND_IN_CONTROL *
FindAnyControl (IN UINTN Page, IN UINTN Control)
{
  return StandInLookUpControl (StandInLookUpPage (Page), Control);
}

UINTN
StandInPageAt (IN UINTN Index)
{
  return (Index < gStandInModel.PageCount) ? gStandInModel.Pages[Index]->Handle : 0;
}

UINTN
StandInPageCount (VOID)
{
  return gStandInModel.LiveCount;
}

BOOLEAN
StandInFindPage (IN UINTN Page, OUT STAND_IN_PAGE_INFO *Info)
{
  STAND_IN_PAGE *Found = StandInLookUpPage (Page);

  if ((Found == nullptr) || (Info == nullptr)) {
    return FALSE;
  }

  Info->Handle = Found->Handle;
  Info->PageId = Found->PageId;
  Info->HiiHandle = Found->HiiHandle;
  Info->ThemeId = Found->ThemeId;
  Info->Prompt = Found->IsPrompt;
  Info->Destroyed = Found->Destroyed;
  Info->ControlCount = Found->ControlCount;
  Info->RefreshCount = Found->RefreshCount;
  Info->DisplayCount = Found->DisplayCount;
  return TRUE;
}

UINTN
StandInControlAt (IN UINTN Page, IN UINTN Index)
{
  STAND_IN_PAGE *Found = StandInLookUpPage (Page);

  return ((Found != nullptr) && (Index < Found->ControlCount)) ? Found->Controls[Index]->Handle : 0;
}

BOOLEAN
StandInFindControl (IN UINTN Page, IN UINTN Control, OUT STAND_IN_CONTROL_INFO *Info)
{
  STAND_IN_CONTROL *Found = FindAnyControl (Page, Control);

  if ((Found == nullptr) || (Info == nullptr)) {
    return FALSE;
  }

  Info->Handle = Found->Handle;
  Info->Kind = Found->Kind;
  Info->Container = Found->Container;
  Info->HiiHandle = Found->HiiHandle;
  Info->Argument = Found->Argument;
  Info->Minimum = Found->Minimum;
  Info->Maximum = Found->Maximum;
  Info->Handler = Found->Handler;
  Info->AttributeWrites = Found->AttributeWrites;
  return TRUE;
}

BOOLEAN
StandInGetAttribute (IN UINTN Page, IN UINTN Control, IN UINT32 Tag, OUT UINTN Values[3])
{
  STAND_IN_CONTROL *Found = FindAnyControl (Page, Control);
  STAND_IN_ATTRIBUTE *Attribute;

  if ((Found == nullptr) || (Values == nullptr)) {
    return FALSE;
  }

  Attribute = StandInFindAttribute (Found, Tag);
  if (Attribute == nullptr) {
    return FALSE;
  }

  Values[0] = Attribute->Value[0];
  Values[1] = Attribute->Value[1];
  Values[2] = Attribute->Value[2];
  return TRUE;
}

BOOLEAN
StandInGetControlText (IN UINTN Page, IN UINTN Control, OUT STAND_IN_TEXT *Text)
{
  STAND_IN_CONTROL *Found = FindAnyControl (Page, Control);

  if ((Found == nullptr) || (Text == nullptr)) {
    return FALSE;
  }

  Text->String = Found->TextCopy;
  Text->HiiHandle = Found->TextHiiHandle;
  Text->StringId = Found->TextStringId;
  return TRUE;
}

BOOLEAN
StandInIsVisible (IN UINTN Page, IN UINTN Control)
{
  STAND_IN_CONTROL *Found = FindAnyControl (Page, Control);
  STAND_IN_ATTRIBUTE *Attribute;

  if (Found == nullptr) {
    return FALSE;
  }

  Attribute = StandInFindAttribute (Found, UI_PROPERTY_VISIBLE);
  return ((Attribute == nullptr) || (Attribute->Value[0] != 0)) ? TRUE : FALSE;
}

BOOLEAN
StandInGetProgress (IN UINTN Page, IN UINTN Control, OUT UINTN *Value)
{
  STAND_IN_CONTROL *Found = FindAnyControl (Page, Control);
  STAND_IN_ATTRIBUTE *Attribute;

  if ((Found == nullptr) || (Value == nullptr)) {
    return FALSE;
  }

  Attribute = StandInFindAttribute (Found, UI_DATA_PROGRESS_VALUE);
  if (Attribute == nullptr) {
    return FALSE;
  }

  *Value = Attribute->Value[0];
  return TRUE;
}

BOOLEAN
StandInGetPrompt (IN UINTN Page, OUT STAND_IN_PROMPT_INFO *Info)
{
  STAND_IN_PAGE *Found = StandInLookUpPage (Page);

  if ((Found == nullptr) || !Found->IsPrompt || (Found->Prompt.ShowCount == 0) || (Info == nullptr)) {
    return FALSE;
  }

  Info->ShowCount = Found->Prompt.ShowCount;
  Info->Title = Found->Prompt.Title;
  Info->Message = Found->Prompt.Message;
  Info->Caption = Found->Prompt.Caption;
  Info->Reserved = Found->Prompt.Reserved;
  Info->MaxLength = Found->Prompt.MaxLength;
  Info->Handler = Found->Prompt.Handler;
  return TRUE;
}
