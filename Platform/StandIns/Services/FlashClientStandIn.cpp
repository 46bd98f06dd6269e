/** @file
  The flash client of the stand-ins: plays a script of FLASH_UPDATE_PAGE_PROTOCOL
  calls as a firmware-update driver makes them while it writes the flash.
**/
#include "ServiceStandInInternal.h"

/**
  @return TRUE when Page has every member that Script calls and each step is
  of a known kind.
**/
STATIC
BOOLEAN
ScriptFits (IN CONST FLASH_UPDATE_PAGE_PROTOCOL *Page, IN CONST STAND_IN_FLASH_SCRIPT *Script)
{
  if ((Page->Show == nullptr) || ((Script->Steps == nullptr) && (Script->StepCount != 0)) ||
      (!Script->OmitResult && (Page->ShowResult == nullptr))) {
    return FALSE;
  }

  for (UINTN Index = 0; Index < Script->StepCount; Index++) {
    switch (Script->Steps[Index].Kind) {
      case StandInFlashProgress:
        if (Page->SetProgress == nullptr) {
          return FALSE;
        }

        break;

      case StandInFlashStatusText:
        if (Page->SetStatusText == nullptr) {
          return FALSE;
        }

        break;

      default:
        return FALSE;
    }
  }

  return TRUE;
}

/**
  Shows the call about to be made to the observer; these calls cannot be made
  to fail.
**/
STATIC
VOID
NoteCall (IN STAND_IN_OPERATION Operation, IN UINTN ArgumentCount, IN UINTN Argument)
{
  UINTN Arguments[] = {Argument};
  EFI_STATUS Status;

  StandInEnter (Operation, Arguments, ArgumentCount, &Status);
}

EFI_STATUS
StandInRunFlashClient (IN FLASH_UPDATE_PAGE_PROTOCOL *Page, IN CONST STAND_IN_FLASH_SCRIPT *Script)
{
  CONST STAND_IN_FLASH_STEP *Step;

  if ((Page == nullptr) || (Script == nullptr) || !ScriptFits (Page, Script)) {
    return EFI_INVALID_PARAMETER;
  }

  NoteCall (StandInOpFlashShow, 0, 0);
  Page->Show ();
  for (UINTN Index = 0; Index < Script->StepCount; Index++) {
    Step = &Script->Steps[Index];
    if (Step->Kind == StandInFlashProgress) {
      NoteCall (StandInOpFlashSetProgress, 1, Step->Percent);
      Page->SetProgress (Step->Percent);
    } else {
      NoteCall (StandInOpFlashSetStatusText, 1, (UINTN)Step->Text);
      //
      // The member takes a text it does not change, as its type does not say.
      //
      Page->SetStatusText (const_cast<CHAR8 *> (Step->Text));
    }

    if (Script->AfterStep != nullptr) {
      Script->AfterStep (Script->Context, Index);
    }
  }

  if (!Script->OmitResult) {
    NoteCall (StandInOpFlashShowResult, 1, Script->Result);
    Page->ShowResult (Script->Result);
  }

  return EFI_SUCCESS;
}
