/** @file
  Keys on the active prompt page: printable characters and Backspace edit the
  password field, Enter submits its text, Escape activates the cancel control.

  The submitted text is handed out as a copy of this file, since the handler
  usually empties the field (which frees the field's own text) while it still
  reads the event. The copy stays valid until the next event is taken.
**/
extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/SimpleTextIn.h>
#include <StandIns/StandInRender.h>

#include "StandInInternal.h"

#define FIRST_PRINTABLE 0x20U
#define LAST_PRINTABLE 0x7EU

typedef struct {
  BOOLEAN Pending; ///< a submit whose field was not looked at since
  UINTN Page;
  UINTN Length; ///< of the field's text when it was submitted
  CHAR16 Text[STAND_IN_FIELD_LIMIT + 1];
} SUBMITTED_TEXT;

STATIC SUBMITTED_TEXT mSubmitted;

STATIC
UINTN
FieldLength (IN CONST STAND_IN_CONTROL *Field)
{
  return (Field->TextCopy == nullptr) ? 0 : StrnLenS (Field->TextCopy, STAND_IN_MAX_TEXT);
}

STATIC
VOID
AppendCharacter (IN CONST STAND_IN_PAGE *Page, IN STAND_IN_CONTROL *Field, IN CHAR16 Character)
{
  CHAR16 Text[STAND_IN_FIELD_LIMIT + 1];
  UINTN Length = FieldLength (Field);

  //
  // A full field ignores further characters, as a field of fixed length does.
  //
  if (Length >= MIN (Page->Prompt.MaxLength, (UINTN)STAND_IN_FIELD_LIMIT)) {
    return;
  }

  if (Length > 0) {
    CopyMem (Text, Field->TextCopy, Length * sizeof (CHAR16));
  }

  Text[Length] = Character;
  Text[Length + 1] = 0;
  if (!EFI_ERROR (StandInSetText (Field, Text, nullptr, 0))) {
    StandInRenderActivePage ();
  }
}

STATIC
VOID
RemoveCharacter (IN STAND_IN_CONTROL *Field)
{
  UINTN Length = FieldLength (Field);

  if (Length == 0) {
    return;
  }

  //
  // Shortened in place: the copy keeps its size until it is replaced.
  //
  Field->TextCopy[Length - 1] = 0;
  StandInRenderActivePage ();
}

STATIC
VOID
SubmitField (IN CONST STAND_IN_PAGE *Page, IN CONST STAND_IN_CONTROL *Field, OUT UI_EVENT *Event)
{
  UINTN Length = FieldLength (Field);
  UINTN Kept = MIN (Length, (UINTN)STAND_IN_FIELD_LIMIT);

  if (Kept > 0) {
    CopyMem (mSubmitted.Text, Field->TextCopy, Kept * sizeof (CHAR16));
  }

  mSubmitted.Text[Kept] = 0;
  mSubmitted.Length = Length;
  mSubmitted.Page = Page->Handle;
  mSubmitted.Pending = TRUE;
  *Event = UI_EVENT{0, PROMPT_CONTROL_PASSWORD, UI_EVENT_TEXT_SUBMITTED, (UINTN)mSubmitted.Text};
}

STAND_IN_KEY_USE
StandInPromptKey (IN UINT16 ScanCode, IN CHAR16 Character, OUT UI_EVENT *Event)
{
  STAND_IN_PAGE *Page = StandInLookUpLivePage (gStandInFramework.State.ActivePage);
  STAND_IN_CONTROL *Field;

  if ((Page == nullptr) || !Page->IsPrompt) {
    return StandInKeyPassed;
  }

  Field = StandInLookUpControl (Page, PROMPT_CONTROL_PASSWORD);
  if (Field == nullptr) {
    return StandInKeyPassed;
  }

  if (ScanCode == SCAN_ESC) {
    *Event = UI_EVENT{0, PROMPT_CONTROL_CANCEL, UI_EVENT_CONTROL_ACTIVATED, 0};
    return StandInKeyEvent;
  }

  if (Character == CHAR_CARRIAGE_RETURN) {
    SubmitField (Page, Field, Event);
    return StandInKeyEvent;
  }

  if (Character == CHAR_BACKSPACE) {
    RemoveCharacter (Field);
    return StandInKeyTyped;
  }

  if ((Character >= FIRST_PRINTABLE) && (Character <= LAST_PRINTABLE)) {
    AppendCharacter (Page, Field, Character);
    return StandInKeyTyped;
  }

  return StandInKeyPassed;
}

VOID
StandInSettleSubmittedText (VOID)
{
  STAND_IN_PAGE *Page;
  STAND_IN_CONTROL *Field;
  UINTN Length;

  if (!mSubmitted.Pending) {
    return;
  }

  mSubmitted.Pending = FALSE;
  Page = StandInLookUpLivePage (mSubmitted.Page);
  Field = (Page == nullptr) ? nullptr : StandInLookUpControl (Page, PROMPT_CONTROL_PASSWORD);
  if (Field == nullptr) {
    return;
  }

  //
  // A handler that emptied the field, or put another text there, is left alone.
  //
  Length = FieldLength (Field);
  if ((Length == 0) || (Length != mSubmitted.Length) ||
      (CompareMem (Field->TextCopy, mSubmitted.Text, MIN (Length, (UINTN)STAND_IN_FIELD_LIMIT) * sizeof (CHAR16)) !=
       0)) {
    return;
  }

  StandInTypeText (Page->Handle, nullptr);
}

VOID
StandInForgetSubmittedText (VOID)
{
  mSubmitted.Pending = FALSE;
}
