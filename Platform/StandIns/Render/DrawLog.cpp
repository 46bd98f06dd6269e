/** @file
  The draw log line of a page or a screen (its format is in StandInRender.h),
  built in a fixed buffer: one line per redraw, no pool, and no field read
  beyond what the line can still hold.
**/
extern "C" {
#include <Library/BaseLib.h>
}

#include "RenderInternal.h"

#define LOG_PREFIX "KESTUI-DRAW "
#define LOG_SEPARATOR " | "
#define LOG_CONTENT_LIMIT (STAND_IN_DRAW_LOG_LIMIT - 2) ///< room for CR LF

typedef struct {
  CHAR8 Text[STAND_IN_DRAW_LOG_LIMIT + 1];
  UINTN Length;
} LOG_LINE;

STATIC
VOID
AppendCharacter (IN OUT LOG_LINE *Line, IN CHAR8 Character)
{
  if (Line->Length < LOG_CONTENT_LIMIT) {
    Line->Text[Line->Length++] = Character;
  }
}

STATIC
VOID
AppendAscii (IN OUT LOG_LINE *Line, IN CONST CHAR8 *Text)
{
  for (UINTN Index = 0; (Text[Index] != '\0') && (Line->Length < LOG_CONTENT_LIMIT); Index++) {
    AppendCharacter (Line, Text[Index]);
  }
}

STATIC
VOID
AppendNumber (IN OUT LOG_LINE *Line, IN UINTN Value)
{
  CHAR8 Digits[21];
  UINTN Count = 0;

  do {
    Digits[Count++] = (CHAR8)('0' + (Value % 10));
    Value /= 10;
  } while (Value != 0);

  while (Count > 0) {
    AppendCharacter (Line, Digits[--Count]);
  }
}

/**
  Appends Text as one field: trailing spaces dropped, characters outside
  printable ASCII as '?', the separator '|' as '/'. Spaces are held back until
  a character follows them, so the text is read only as far as the line goes.
**/
STATIC
VOID
AppendText (IN OUT LOG_LINE *Line, IN CONST CHAR16 *Text OPTIONAL)
{
  UINTN Spaces = 0;

  for (UINTN Index = 0; (Text != nullptr) && (Text[Index] != 0); Index++) {
    CHAR16 Character = Text[Index];

    if (Character == u' ') {
      Spaces++;
      if (Line->Length + Spaces >= LOG_CONTENT_LIMIT) {
        return;
      }

      continue;
    }

    for (; Spaces > 0; Spaces--) {
      AppendCharacter (Line, ' ');
    }

    if (Line->Length >= LOG_CONTENT_LIMIT) {
      return;
    }

    if (Character == u'|') {
      AppendCharacter (Line, '/');
    } else if ((Character < 0x20) || (Character > 0x7E)) {
      AppendCharacter (Line, '?');
    } else {
      AppendCharacter (Line, (CHAR8)Character);
    }
  }
}

STATIC
VOID
AppendColour (IN OUT LOG_LINE *Line, IN CONST STAND_IN_CONTROL *Control)
{
  STATIC CONST CHAR8 Hex[] = "0123456789ABCDEF";
  STAND_IN_ATTRIBUTE *Colour = StandInFindAttribute (Control, UI_STYLE_TEXT_COLOR);

  if (Colour == nullptr) {
    return;
  }

  AppendAscii (Line, " #");
  for (UINTN Shift = 24; Shift > 0; Shift -= 4) {
    AppendCharacter (Line, Hex[(Colour->Value[0] >> (Shift - 4)) & 0xF]);
  }
}

STATIC
VOID
BeginLine (OUT LOG_LINE *Line, IN CONST CHAR8 *Name)
{
  Line->Length = 0;
  AppendAscii (Line, LOG_PREFIX);

  //
  // A screen's name comes from its caller: it must not break the line.
  //
  for (UINTN Index = 0; (Name[Index] != '\0') && (Line->Length < LOG_CONTENT_LIMIT); Index++) {
    CHAR8 Character = Name[Index];

    AppendCharacter (Line, ((Character > ' ') && (Character <= '~') && (Character != '|')) ? Character : '?');
  }
}

STATIC
VOID
FinishLine (IN OUT LOG_LINE *Line)
{
  Line->Text[Line->Length++] = '\r';
  Line->Text[Line->Length++] = '\n';
  Line->Text[Line->Length] = '\0';
  RenderWriteLog (Line->Text, Line->Length);
}

STATIC
BOOLEAN
IsVisible (IN CONST STAND_IN_CONTROL *Control)
{
  return RenderAttribute (Control, UI_PROPERTY_VISIBLE, 0, 1) != 0;
}

/** Appends the field of one control of an ordinary page, if it has one. **/
STATIC
VOID
AppendControl (IN OUT LOG_LINE *Line, IN STAND_IN_CONTROL *Control)
{
  STAND_IN_IMAGE *Image;
  UINTN Minimum;

  switch (Control->Kind) {
    case StandInControlText:
      AppendAscii (Line, LOG_SEPARATOR);
      AppendText (Line, RenderControlText (Control));
      AppendColour (Line, Control);
      break;
    case StandInControlProgress:
      Minimum = RenderAttribute (Control, UI_DATA_PROGRESS_MINIMUM, 0, Control->Minimum);
      AppendAscii (Line, LOG_SEPARATOR "bar=");
      AppendNumber (Line, RenderAttribute (Control, UI_DATA_PROGRESS_VALUE, 0, Minimum));
      break;
    case StandInControlImage:
      //
      // The decode is kept with the image, so the drawing has done it already.
      //
      Image = StandInLookUpImage (RenderAttribute (Control, UI_STYLE_IMAGE, 0, 0));
      if ((Image != nullptr) && !EFI_ERROR (StandInDecodeImage (Image))) {
        AppendAscii (Line, LOG_SEPARATOR "image=");
        AppendNumber (Line, Image->Width);
        AppendCharacter (Line, 'x');
        AppendNumber (Line, Image->Height);
      }

      break;
    default:
      break;
  }
}

/** Appends the prompt's texts as drawn (own text, else what ShowPrompt received) and the field's length. **/
STATIC
VOID
AppendPrompt (IN OUT LOG_LINE *Line, IN STAND_IN_PAGE *Page)
{
  CONST CHAR16 *Shown[] = {Page->Prompt.Title, Page->Prompt.Message, Page->Prompt.Caption};
  STAND_IN_CONTROL *Field;

  for (UINTN Index = 0; Index < ARRAY_SIZE (Shown); Index++) {
    STAND_IN_CONTROL *Control = StandInLookUpControl (Page, PROMPT_CONTROL_TEXT_1 + Index);
    CONST CHAR16 *Own = (Control != nullptr) ? RenderControlText (Control) : nullptr;

    if ((Control != nullptr) && !IsVisible (Control)) {
      continue;
    }

    AppendAscii (Line, LOG_SEPARATOR);
    AppendText (Line, (Own != nullptr) ? Own : Shown[Index]);
    if (Control != nullptr) {
      AppendColour (Line, Control);
    }
  }

  Field = StandInLookUpControl (Page, PROMPT_CONTROL_PASSWORD);
  AppendAscii (Line, LOG_SEPARATOR "field=");
  AppendNumber (
    Line, ((Field == nullptr) || (Field->TextCopy == nullptr)) ? 0 : StrnLenS (Field->TextCopy, STAND_IN_MAX_TEXT));
}

VOID
RenderLogPage (IN STAND_IN_PAGE *Page)
{
  LOG_LINE Line;
  CONST CHAR8 *Name = "page";

  if (Page->IsPrompt) {
    Name = "prompt";
  } else if (Page->ThemeId == 2) {
    Name = "welcome";
  } else if (Page->ThemeId == 8) {
    Name = "flash";
  }

  BeginLine (&Line, Name);
  if (Page->IsPrompt) {
    AppendPrompt (&Line, Page);
  } else {
    for (UINTN Index = 0; (Index < Page->ControlCount) && (Line.Length < LOG_CONTENT_LIMIT); Index++) {
      if (IsVisible (Page->Controls[Index])) {
        AppendControl (&Line, Page->Controls[Index]);
      }
    }
  }

  FinishLine (&Line);
}

VOID
RenderLogScreen (IN CONST CHAR8 *Name,
                 IN CONST CHAR16 *Title OPTIONAL,
                 IN CONST CHAR16 *CONST *Lines OPTIONAL,
                 IN UINTN LineCount,
                 IN UINTN Selected)
{
  LOG_LINE Line;

  BeginLine (&Line, Name);
  AppendAscii (&Line, LOG_SEPARATOR);
  AppendText (&Line, Title);
  for (UINTN Index = 0; (Lines != nullptr) && (Index < LineCount) && (Line.Length < LOG_CONTENT_LIMIT); Index++) {
    AppendAscii (&Line, (Index == Selected) ? LOG_SEPARATOR "> " : LOG_SEPARATOR);
    AppendText (&Line, Lines[Index]);
  }

  FinishLine (&Line);
}
