/** @file
  The control attribute table of the UI framework stand-in: (Page, Container,
  Control, Tag, V1, V2, V3) calls, checked against the page model, stored per
  control, and read back with the meaning that pages rely on.
**/
#include "StandInInternal.h"

#define TAG_FAMILY(Tag) ((Tag) >> 16)
#define FAMILY_PROPERTY 0x7072U
#define FAMILY_STYLE 0x7374U
#define FAMILY_DATA 0x6461U

//
// Handed out for a control without text; never written by the stand-in.
//
STATIC CHAR16 mEmptyText[1] = {0};

/**
  @return the pointer that an attribute value carries: the attribute calls
  pass strings and out cells as UINTN values.
**/
STATIC
VOID *
ValuePointer (IN UINTN Value)
{
  return (VOID *)Value; // NOLINT(performance-no-int-to-ptr)
}

STATIC
BOOLEAN
IsProgressTag (IN UINT32 Tag)
{
  return ((Tag == UI_DATA_PROGRESS_MINIMUM) || (Tag == UI_DATA_PROGRESS_MAXIMUM) || (Tag == UI_DATA_PROGRESS_VALUE))
           ? TRUE
           : FALSE;
}

/**
  @return whether a tag with a meaning to the stand-in fits the kind of control.
**/
STATIC
BOOLEAN
KindHasTag (IN STAND_IN_CONTROL_KIND Kind, IN UINT32 Tag)
{
  if (IsProgressTag (Tag)) {
    return (Kind == StandInControlProgress) ? TRUE : FALSE;
  }

  if ((Tag == UI_STYLE_IMAGE) || (Tag == UI_STYLE_IMAGE_RECORD)) {
    return (Kind == StandInControlImage) ? TRUE : FALSE;
  }

  if (Tag == UI_DATA_TEXT) {
    return ((Kind == StandInControlText) || (Kind == StandInControlField) || (Kind == StandInControlButton)) ? TRUE
                                                                                                             : FALSE;
  }

  return TRUE;
}

/**
  Finds the control that a call addresses.

  @retval EFI_SUCCESS            *Target is the control.
  @retval EFI_INVALID_PARAMETER  Unknown or destroyed page, a control not on it or not in that container, a
                                 tag of another family than Family, or one that the control's kind lacks.
**/
STATIC
EFI_STATUS
ResolveControl (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINT32 Family, OUT STAND_IN_CONTROL **Target)
{
  STAND_IN_CONTROL *Found;
  UINTN ExpectedContainer;

  Found = StandInLookUpControl (StandInLookUpLivePage (Page), Control);
  if (Found == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  ExpectedContainer = (Found->Kind == StandInControlPage) ? 0 : Found->Container;
  if ((Container != ExpectedContainer) || (TAG_FAMILY (Tag) != Family) || !KindHasTag (Found->Kind, Tag)) {
    return EFI_INVALID_PARAMETER;
  }

  *Target = Found;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiSetControlProperty (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  UINTN Arguments[] = {Page, Container, Control, Tag, Value1, Value2, Value3};
  STAND_IN_CONTROL *Target;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetControlProperty, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (EFI_ERROR (ResolveControl (Page, Container, Control, Tag, FAMILY_PROPERTY, &Target))) {
    return StandInReject (StandInOpSetControlProperty, EFI_INVALID_PARAMETER);
  }

  return StandInStoreAttribute (Target, Tag, Value1, Value2, Value3);
}

STATIC
EFI_STATUS
EFIAPI
UiSetControlStyle (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  UINTN Arguments[] = {Page, Container, Control, Tag, Value1, Value2, Value3};
  STAND_IN_CONTROL *Target;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetControlStyle, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  //
  // The image record is read only; an image value must be one that GetImage
  // handed out (0 sets no image).
  //
  if (EFI_ERROR (ResolveControl (Page, Container, Control, Tag, FAMILY_STYLE, &Target)) ||
      (Tag == UI_STYLE_IMAGE_RECORD) ||
      ((Tag == UI_STYLE_IMAGE) && (Value1 != 0) && (StandInLookUpImage (Value1) == nullptr))) {
    return StandInReject (StandInOpSetControlStyle, EFI_INVALID_PARAMETER);
  }

  return StandInStoreAttribute (Target, Tag, Value1, Value2, Value3);
}

STATIC
EFI_STATUS
EFIAPI
UiSetControlData (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  UINTN Arguments[] = {Page, Container, Control, Tag, Value1, Value2, Value3};
  STAND_IN_CONTROL *Target;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetControlData, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (EFI_ERROR (ResolveControl (Page, Container, Control, Tag, FAMILY_DATA, &Target))) {
    return StandInReject (StandInOpSetControlData, EFI_INVALID_PARAMETER);
  }

  if (Tag == UI_DATA_TEXT) {
    //
    // V1 a string (copied: callers pass their own buffers), or V1 0 with an
    // HII handle and a 16-bit string id (0: empty).
    //
    if ((Value1 == 0) && (Value3 > MAX_UINT16)) {
      return StandInReject (StandInOpSetControlData, EFI_INVALID_PARAMETER);
    }

    Status =
      StandInSetText (Target, (CONST CHAR16 *)ValuePointer (Value1), ValuePointer (Value2), (EFI_STRING_ID)Value3);
    if (EFI_ERROR (Status)) {
      return (Status == EFI_INVALID_PARAMETER) ? StandInReject (StandInOpSetControlData, Status) : Status;
    }
  }

  return StandInStoreAttribute (Target, Tag, Value1, Value2, Value3);
}

/**
  Points *Cell at the image record of an image control.
**/
STATIC
EFI_STATUS
ReadImageRecord (IN STAND_IN_CONTROL *Control, OUT UINTN *Cell)
{
  STAND_IN_ATTRIBUTE *Attribute;
  STAND_IN_IMAGE *Image;
  EFI_STATUS Status;

  *Cell = 0;
  Attribute = StandInFindAttribute (Control, UI_STYLE_IMAGE);
  Image = StandInLookUpImage ((Attribute == nullptr) ? 0 : Attribute->Value[0]);
  if (Image == nullptr) {
    return EFI_NOT_READY;
  }

  Status = StandInDecodeImage (Image);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  //
  // No layout is made: the image sits at the origin.
  //
  Control->ImageRecord.X = 0;
  Control->ImageRecord.Y = 0;
  Control->ImageRecord.Width = Image->Width;
  Control->ImageRecord.Height = Image->Height;
  Control->ImageRecord.BltBuffer = Image->Pixels;
  *Cell = (UINTN)&Control->ImageRecord;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiGetControlStyle (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  UINTN Arguments[] = {Page, Container, Control, Tag, Value1, Value2, Value3};
  UINTN *Cell = (UINTN *)ValuePointer (Value1);
  STAND_IN_CONTROL *Target;
  STAND_IN_ATTRIBUTE *Attribute;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetControlStyle, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if ((Cell == nullptr) || EFI_ERROR (ResolveControl (Page, Container, Control, Tag, FAMILY_STYLE, &Target))) {
    return StandInReject (StandInOpGetControlStyle, EFI_INVALID_PARAMETER);
  }

  if (Tag == UI_STYLE_IMAGE_RECORD) {
    return ReadImageRecord (Target, Cell);
  }

  Attribute = StandInFindAttribute (Target, Tag);
  if (Attribute == nullptr) {
    return EFI_NOT_FOUND;
  }

  *Cell = Attribute->Value[0];
  return EFI_SUCCESS;
}

/**
  Points *Cell at the control's text: its copy, the HII string it refers to,
  or an empty string.
**/
STATIC
EFI_STATUS
ReadText (IN CONST STAND_IN_CONTROL *Control, OUT UINTN *Cell)
{
  CHAR16 *String;
  EFI_STATUS Status;

  *Cell = (UINTN)mEmptyText;
  if (Control->TextCopy != nullptr) {
    *Cell = (UINTN)Control->TextCopy;
    return EFI_SUCCESS;
  }

  if (Control->TextStringId == 0) {
    return EFI_SUCCESS;
  }

  Status = StandInLookUpString (Control->TextHiiHandle, Control->TextStringId, &String);
  if (!EFI_ERROR (Status)) {
    *Cell = (UINTN)String;
  }

  return Status;
}

STATIC
EFI_STATUS
EFIAPI
UiGetControlData (
  IN UINTN Page, IN UINTN Container, IN UINTN Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  UINTN Arguments[] = {Page, Container, Control, Tag, Value1, Value2, Value3};
  UINTN *Cell = (UINTN *)ValuePointer (Value1);
  STAND_IN_CONTROL *Target;
  STAND_IN_ATTRIBUTE *Attribute;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetControlData, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if ((Cell == nullptr) || EFI_ERROR (ResolveControl (Page, Container, Control, Tag, FAMILY_DATA, &Target))) {
    return StandInReject (StandInOpGetControlData, EFI_INVALID_PARAMETER);
  }

  if (Tag == UI_DATA_TEXT) {
    return ReadText (Target, Cell);
  }

  Attribute = StandInFindAttribute (Target, Tag);
  if (Attribute != nullptr) {
    *Cell = Attribute->Value[0];
    return EFI_SUCCESS;
  }

  //
  // A progress control starts at its minimum, with the range it was made with.
  //
  if ((Tag == UI_DATA_PROGRESS_MINIMUM) || (Tag == UI_DATA_PROGRESS_VALUE)) {
    Attribute = StandInFindAttribute (Target, UI_DATA_PROGRESS_MINIMUM);
    *Cell = (Attribute != nullptr) ? Attribute->Value[0] : Target->Minimum;
    return EFI_SUCCESS;
  }

  if (Tag == UI_DATA_PROGRESS_MAXIMUM) {
    *Cell = Target->Maximum;
    return EFI_SUCCESS;
  }

  return EFI_NOT_FOUND;
}

UI_ATTRIBUTES gStandInAttributes = {
  nullptr, UiSetControlProperty, UiGetControlStyle, UiSetControlStyle, UiGetControlData, UiSetControlData,
};
