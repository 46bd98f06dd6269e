/** @file
  The prompt page: CreatePromptPage with its fixed controls, the prompt
  interface's ShowPrompt, and the typing of a password for tests.
**/
#include <StandIns/StandInRender.h>

#include "StandInInternal.h"

STATIC
EFI_STATUS
EFIAPI
PromptShow (IN CHAR16 *Title,
            IN CHAR16 *Message,
            IN CHAR16 *Caption,
            IN UINTN Reserved,
            IN UINTN MaxLength,
            IN UI_EVENT_HANDLER Handler);

//
// The interface has no pointer to itself, so one record serves every prompt
// page and acts on the one made last.
//
STATIC PROMPT_INTERFACE mPromptInterface = {PromptShow};

///
/// The prompt's controls, in the order of their fixed ids from 1711.
///
STATIC CONST STAND_IN_CONTROL_KIND mPromptControlKinds[] = {
  StandInControlText,  StandInControlText,   StandInControlText,
  StandInControlField, StandInControlButton, StandInControlButton,
};

STATIC_ASSERT (ARRAY_SIZE (mPromptControlKinds) == PROMPT_CONTROL_SUBMIT - PROMPT_CONTROL_TEXT_1 + 1,
               "one kind per fixed prompt control");

EFI_STATUS
EFIAPI
PageEngineCreatePromptPage (IN UINTN Reserved, OUT UINTN *Page, OUT PROMPT_INTERFACE **Prompt)
{
  UINTN Arguments[] = {Reserved, (UINTN)Page, (UINTN)Prompt};
  STAND_IN_PAGE *NewPage;
  STAND_IN_CONTROL *Control;
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpCreatePromptPage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!gStandInModel.Installed) {
    return EFI_NOT_STARTED;
  }

  if ((Page == nullptr) || (Prompt == nullptr)) {
    return StandInReject (StandInOpCreatePromptPage, EFI_INVALID_PARAMETER);
  }

  Status = StandInNewPage (0, nullptr, 0, &NewPage);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  NewPage->IsPrompt = TRUE;
  for (UINTN Index = 0; Index < ARRAY_SIZE (mPromptControlKinds); Index++) {
    Status = StandInNewControl (NewPage, PROMPT_CONTROL_TEXT_1 + Index, mPromptControlKinds[Index], PROMPT_CONTAINER,
                                &Control);
    if (EFI_ERROR (Status)) {
      //
      // A prompt without all its controls is no prompt: the half-made page is
      // dropped (released with the others at uninstall).
      //
      StandInDestroyPage (NewPage);
      return Status;
    }
  }

  *Page = NewPage->Handle;
  *Prompt = &mPromptInterface;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
PromptShow (IN CHAR16 *Title,
            IN CHAR16 *Message,
            IN CHAR16 *Caption,
            IN UINTN Reserved,
            IN UINTN MaxLength,
            IN UI_EVENT_HANDLER Handler)
{
  UINTN Arguments[] = {(UINTN)Title, (UINTN)Message, (UINTN)Caption, Reserved, MaxLength, (UINTN)Handler};
  STAND_IN_PAGE *Page;
  CHAR16 *Copies[3] = {nullptr, nullptr, nullptr};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpShowPrompt, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  Page = StandInLatestPromptPage ();
  if (Page == nullptr) {
    return StandInReject (StandInOpShowPrompt, EFI_NOT_READY);
  }

  //
  // All three copies or none: a failed copy leaves the last show's record.
  //
  Status = StandInCopyText (Title, &Copies[0]);
  if (!EFI_ERROR (Status)) {
    Status = StandInCopyText (Message, &Copies[1]);
  }

  if (!EFI_ERROR (Status)) {
    Status = StandInCopyText (Caption, &Copies[2]);
  }

  if (EFI_ERROR (Status)) {
    for (UINTN Index = 0; Index < ARRAY_SIZE (Copies); Index++) {
      StandInFree (Copies[Index]);
    }

    return (Status == EFI_INVALID_PARAMETER) ? StandInReject (StandInOpShowPrompt, Status) : Status;
  }

  StandInFree (Page->Prompt.Title);
  StandInFree (Page->Prompt.Message);
  StandInFree (Page->Prompt.Caption);
  Page->Prompt.Title = Copies[0];
  Page->Prompt.Message = Copies[1];
  Page->Prompt.Caption = Copies[2];
  Page->Prompt.Reserved = Reserved;
  Page->Prompt.MaxLength = MaxLength;
  Page->Prompt.Handler = Handler;
  Page->Prompt.ShowCount++;
  if (Page->Handle == gStandInFramework.State.ActivePage) {
    StandInRenderActivePage ();
  }

  return EFI_SUCCESS;
}

EFI_STATUS
StandInTypeText (IN UINTN Page, IN CONST CHAR16 *Text OPTIONAL)
{
  STAND_IN_PAGE *Target;
  STAND_IN_CONTROL *Field;
  EFI_STATUS Status;

  Target = (Page == 0) ? StandInLatestPromptPage () : StandInLookUpLivePage (Page);
  if ((Target == nullptr) || !Target->IsPrompt) {
    return EFI_INVALID_PARAMETER;
  }

  Field = StandInLookUpControl (Target, PROMPT_CONTROL_PASSWORD);
  if (Field == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  Status = StandInSetText (Field, Text, nullptr, 0);
  if (!EFI_ERROR (Status) && (Target->Handle == gStandInFramework.State.ActivePage)) {
    StandInRenderActivePage ();
  }

  return Status;
}
