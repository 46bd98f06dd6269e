/** @file
  Read-only queries of the UI framework stand-in for tests and embedders.
**/
#include "StandInInternal.h"

VOID
StandInGetFrameworkState (OUT STAND_IN_FRAMEWORK_STATE *State)
{
  if (State != nullptr) {
    *State = gStandInFramework.State;
  }
}

BOOLEAN
StandInGetUiMode (IN UINTN Index, OUT UINTN *Mode)
{
  if ((Mode == nullptr) || (Index >= gStandInFramework.State.UiModeCount) || (Index >= STAND_IN_HISTORY_LIMIT)) {
    return FALSE;
  }

  *Mode = gStandInFramework.Modes[Index];
  return TRUE;
}

BOOLEAN
StandInGetImagePackage (IN UINTN Index, OUT STAND_IN_IMAGE_PACKAGE *Package)
{
  if ((Package == nullptr) || (Index >= gStandInFramework.State.ImagePackageCount) ||
      (Index >= STAND_IN_HISTORY_LIMIT)) {
    return FALSE;
  }

  *Package = gStandInFramework.Packages[Index];
  return TRUE;
}

BOOLEAN
StandInGetImageData (IN CONST CHAR16 *Name, OUT CONST VOID **Data, OUT UINTN *Size)
{
  STAND_IN_IMAGE *Image = StandInFindImage (Name);

  if ((Image == nullptr) || (Data == nullptr) || (Size == nullptr)) {
    return FALSE;
  }

  *Data = Image->Data;
  *Size = Image->Size;
  return TRUE;
}

BOOLEAN
StandInGetDelivery (IN UINTN Index, OUT STAND_IN_DELIVERY *Delivery)
{
  if ((Delivery == nullptr) || (Index >= gStandInFramework.DeliveryCount)) {
    return FALSE;
  }

  *Delivery = gStandInFramework.Deliveries[Index];
  return TRUE;
}
