/** @file
  A control's attributes (tag -> V1, V2, V3, the last write winning) and its
  text.

  A control carries a few distinct tags (about ten on the busiest), so a
  search of its short list is cheaper than any index would be.
**/
#include "StandInInternal.h"

STAND_IN_ATTRIBUTE *
StandInFindAttribute (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag)
{
  for (UINTN Index = 0; Index < Control->AttributeCount; Index++) {
    if (Control->Attributes[Index].Tag == Tag) {
      return &Control->Attributes[Index];
    }
  }

  return nullptr;
}

EFI_STATUS
StandInStoreAttribute (IN STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3)
{
  STAND_IN_ATTRIBUTE *Attribute;

  Attribute = StandInFindAttribute (Control, Tag);
  if (Attribute == nullptr) {
    if (EFI_ERROR (StandInGrow (Control->Attributes, Control->AttributeCapacity, Control->AttributeCount))) {
      return EFI_OUT_OF_RESOURCES;
    }

    Attribute = &Control->Attributes[Control->AttributeCount++];
    Attribute->Tag = Tag;
  }

  Attribute->Value[0] = Value1;
  Attribute->Value[1] = Value2;
  Attribute->Value[2] = Value3;
  Control->AttributeWrites++;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInSetText (IN STAND_IN_CONTROL *Control,
                IN CONST CHAR16 *String OPTIONAL,
                IN EFI_HII_HANDLE HiiHandle,
                IN EFI_STRING_ID StringId)
{
  CHAR16 *Copy;
  EFI_STATUS Status;

  //
  // The copy is made first, so that a failure leaves the old text in place.
  //
  Status = StandInCopyText (String, &Copy);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  StandInFree (Control->TextCopy);
  Control->TextCopy = Copy;
  Control->TextHiiHandle = (Copy == nullptr) ? HiiHandle : nullptr;
  Control->TextStringId = (Copy == nullptr) ? StringId : 0;
  return EFI_SUCCESS;
}

VOID
StandInReleaseControl (IN STAND_IN_CONTROL *Control)
{
  StandInFree (Control->Attributes);
  Control->AttributeCount = 0;
  Control->AttributeCapacity = 0;
  StandInFree (Control->TextCopy);
}
