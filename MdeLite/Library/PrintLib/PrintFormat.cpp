/** @file
  The formatting engine: one pass over the format string, each character
  written once into the caller's buffer. Work stops as soon as the buffer is
  full, so a long argument or a wide field costs no more than the buffer holds.

  A conversion is '%' [flags] [width] ['.' precision] ['l' | 'L'] type:
    flags      '-' left-justify, '+' sign, ' ' blank for a sign, ',' thousands
               separators, '0' pad numbers with zeros
    width      digits or '*' (the next argument, 32 bits)
    precision  digits or '*': the most characters of a string, the fewest
               digits of a number
    type       a: 8-bit string; s, S: UCS-2 string; c: character; d: signed
               decimal; u: unsigned decimal; x, X: hexadecimal in lower and
               upper case; p: pointer; g: GUID; r: status text; %: a percent
               sign. Any other character stands for itself.
  Numbers are 32 bits unless 'l' or 'L' makes them 64. A null string argument
  prints "<null string>", a null GUID "<null guid>". A line feed in the format
  becomes carriage return and line feed, as the UEFI consoles expect.
**/
#include "PrintLibInternal.h"

extern "C" {
#include <Library/BaseMemoryLib.h>
}

#define FLAG_LEFT_JUSTIFY 0x0001U
#define FLAG_PREFIX_SIGN 0x0002U
#define FLAG_PREFIX_BLANK 0x0004U
#define FLAG_COMMA 0x0008U
#define FLAG_PREFIX_ZERO 0x0010U
#define FLAG_LONG 0x0020U
#define FLAG_PRECISION 0x0040U

//
// Widths and precisions beyond this are cut; the buffer ends long before.
//
#define MAXIMUM_FIELD_WIDTH 0x7FFFFFFFU

//
// Room for the digits of a 64-bit value with thousands separators: 20 + 6.
//
#define MAXIMUM_VALUE_CHARACTERS 32

//
// "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx"
//
#define GUID_TEXT_LENGTH 36

typedef struct {
  VOID *Buffer;
  BOOLEAN Unicode;
  UINTN Capacity; // characters before the terminating null
  UINTN Count;    // characters written
} PRINT_OUTPUT;

//
// A piece of text to copy: 8-bit or UCS-2, ended by a null or by MaxLength.
//
typedef struct {
  CONST VOID *Text;
  BOOLEAN Wide;
  UINTN MaxLength;
} PRINT_TEXT;

STATIC CONST CHAR8 mNullString[] = "<null string>";
STATIC CONST CHAR8 mNullGuid[] = "<null guid>";
STATIC CONST CHAR8 mLowerHex[] = "0123456789abcdef";
STATIC CONST CHAR8 mUpperHex[] = "0123456789ABCDEF";

STATIC BOOLEAN
OutputFull (IN CONST PRINT_OUTPUT *Output)
{
  return (BOOLEAN)(Output->Count >= Output->Capacity);
}

STATIC VOID
PutCharacter (IN OUT PRINT_OUTPUT *Output, IN CHAR16 Character)
{
  if (OutputFull (Output)) {
    return;
  }

  if (Output->Unicode) {
    ((CHAR16 *)Output->Buffer)[Output->Count] = Character;
  } else {
    ((CHAR8 *)Output->Buffer)[Output->Count] = (CHAR8)Character;
  }

  Output->Count++;
}

STATIC VOID
PutRepeated (IN OUT PRINT_OUTPUT *Output, IN CHAR16 Character, IN UINTN Repeat)
{
  UINTN Room = Output->Capacity - Output->Count;

  for (UINTN Index = 0; Index < MIN (Repeat, Room); Index++) {
    PutCharacter (Output, Character);
  }
}

STATIC CHAR16
TextCharacter (IN CONST PRINT_TEXT *Text, IN UINTN Index)
{
  if (Text->Wide) {
    return ((CONST CHAR16 *)Text->Text)[Index];
  }

  return (UINT8)((CONST CHAR8 *)Text->Text)[Index];
}

/**
  @return the length of Text, counted no further than Limit.
**/
STATIC UINTN
TextLength (IN CONST PRINT_TEXT *Text, IN UINTN Limit)
{
  UINTN Length = 0;

  Limit = MIN (Limit, Text->MaxLength);
  while (Length < Limit && TextCharacter (Text, Length) != 0) {
    Length++;
  }

  return Length;
}

template <typename DESTINATION, typename SOURCE>
STATIC UINTN
CopyCharacters (OUT DESTINATION *Destination, IN CONST SOURCE *Source, IN UINTN Limit)
{
  UINTN Index = 0;

  while (Index < Limit && Source[Index] != 0) {
    Destination[Index] = (DESTINATION)Source[Index];
    Index++;
  }

  return Index;
}

/**
  Copies Text up to its end, its MaxLength or the end of the buffer. The four
  pairings of character sizes each get their own loop: long texts are copied
  at memory speed rather than through a test per character.
**/
STATIC VOID
CopyText (IN OUT PRINT_OUTPUT *Output, IN CONST PRINT_TEXT *Text)
{
  UINTN Limit = MIN (Text->MaxLength, Output->Capacity - Output->Count);
  CONST UINT8 *Narrow = (CONST UINT8 *)Text->Text;
  CONST CHAR16 *Wide = (CONST CHAR16 *)Text->Text;

  if (Output->Unicode) {
    CHAR16 *Destination = (CHAR16 *)Output->Buffer + Output->Count;
    Output->Count +=
      Text->Wide ? CopyCharacters (Destination, Wide, Limit) : CopyCharacters (Destination, Narrow, Limit);
  } else {
    UINT8 *Destination = (UINT8 *)Output->Buffer + Output->Count;
    Output->Count +=
      Text->Wide ? CopyCharacters (Destination, Wide, Limit) : CopyCharacters (Destination, Narrow, Limit);
  }
}

/**
  Writes Text into a field of Width characters, padded with blanks.
**/
STATIC VOID
PutText (IN OUT PRINT_OUTPUT *Output, IN CONST PRINT_TEXT *Text, IN UINTN Width, IN UINTN Flags)
{
  UINTN Padding = 0;

  if (Width != 0) {
    //
    // Only a text shorter than the field needs its length.
    //
    UINTN Length = TextLength (Text, Width);
    Padding = Width - Length;
  }

  if ((Flags & FLAG_LEFT_JUSTIFY) == 0) {
    PutRepeated (Output, ' ', Padding);
  }

  CopyText (Output, Text);

  if ((Flags & FLAG_LEFT_JUSTIFY) != 0) {
    PutRepeated (Output, ' ', Padding);
  }
}

STATIC VOID
PutAsciiText (IN OUT PRINT_OUTPUT *Output, IN CONST CHAR8 *String, IN UINTN Width, IN UINTN Flags, IN UINTN MaxLength)
{
  PRINT_TEXT Text = {String, FALSE, MaxLength};

  PutText (Output, &Text, Width, Flags);
}

/**
  Writes Value in Radix into Reversed, last digit first.
  @return the number of characters written.
**/
STATIC UINTN
ValueToReversedDigits (OUT CHAR8 *Reversed, IN UINT64 Value, IN UINT32 Radix, IN BOOLEAN UpperCase, IN BOOLEAN Comma)
{
  CONST CHAR8 *Digits = UpperCase ? mUpperHex : mLowerHex;
  UINTN Count = 0;
  UINTN Group = 0;

  do {
    if (Comma && Group == 3) {
      Reversed[Count++] = ',';
      Group = 0;
    }

    Reversed[Count++] = Digits[Value % Radix];
    Value /= Radix;
    Group++;
  } while (Value != 0);

  return Count;
}

/**
  Writes a number: [blanks] [sign] [zeros] digits [blanks].
**/
STATIC VOID
PutNumber (IN OUT PRINT_OUTPUT *Output,
           IN UINT64 Magnitude,
           IN BOOLEAN Negative,
           IN UINT32 Radix,
           IN BOOLEAN UpperCase,
           IN UINTN Flags,
           IN UINTN Width,
           IN UINTN Precision)
{
  CHAR8 Reversed[MAXIMUM_VALUE_CHARACTERS];
  CHAR16 Sign = 0;
  UINTN DigitCount;
  UINTN MinimumDigits;
  UINTN Zeros;
  UINTN FieldLength;
  UINTN Padding;

  DigitCount =
    ValueToReversedDigits (Reversed, Magnitude, Radix, UpperCase, (BOOLEAN)(Radix == 10 && (Flags & FLAG_COMMA) != 0));
  if (Negative) {
    Sign = '-';
  } else if (Radix == 10 && (Flags & FLAG_PREFIX_SIGN) != 0) {
    Sign = '+';
  } else if (Radix == 10 && (Flags & FLAG_PREFIX_BLANK) != 0) {
    Sign = ' ';
  }

  MinimumDigits = ((Flags & FLAG_PRECISION) != 0) ? Precision : 1;
  if ((Flags & (FLAG_PREFIX_ZERO | FLAG_LEFT_JUSTIFY | FLAG_PRECISION)) == FLAG_PREFIX_ZERO) {
    MinimumDigits = MAX (MinimumDigits, Width - MIN (Width, (UINTN)(Sign != 0)));
  }

  Zeros = (MinimumDigits > DigitCount) ? MinimumDigits - DigitCount : 0;
  FieldLength = (Sign != 0 ? 1 : 0) + Zeros + DigitCount;
  Padding = (Width > FieldLength) ? Width - FieldLength : 0;

  if ((Flags & FLAG_LEFT_JUSTIFY) == 0) {
    PutRepeated (Output, ' ', Padding);
  }

  if (Sign != 0) {
    PutCharacter (Output, Sign);
  }

  PutRepeated (Output, '0', Zeros);
  while (DigitCount != 0 && !OutputFull (Output)) {
    PutCharacter (Output, (UINT8)Reversed[--DigitCount]);
  }

  if ((Flags & FLAG_LEFT_JUSTIFY) != 0) {
    PutRepeated (Output, ' ', Padding);
  }
}

STATIC CHAR8 *
AppendHex (OUT CHAR8 *Destination, IN UINT64 Value, IN UINTN Digits)
{
  for (UINTN Index = Digits; Index != 0; Index--) {
    Destination[Index - 1] = mLowerHex[Value & 0xF];
    Value >>= 4;
  }

  return Destination + Digits;
}

/**
  Writes Guid as "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx" into Text, null-terminated.
**/
STATIC VOID
GuidToText (OUT CHAR8 (&Text)[GUID_TEXT_LENGTH + 1], IN CONST GUID *Guid)
{
  GUID Value;
  CHAR8 *Cursor = Text;

  //
  // The GUID may sit unaligned inside a packed structure.
  //
  CopyMem (&Value, Guid, sizeof (Value));
  Cursor = AppendHex (Cursor, Value.Data1, 8);
  *Cursor++ = '-';
  Cursor = AppendHex (Cursor, Value.Data2, 4);
  *Cursor++ = '-';
  Cursor = AppendHex (Cursor, Value.Data3, 4);
  *Cursor++ = '-';
  Cursor = AppendHex (Cursor, Value.Data4[0], 2);
  Cursor = AppendHex (Cursor, Value.Data4[1], 2);
  *Cursor++ = '-';
  for (UINTN Index = 2; Index < 8; Index++) {
    Cursor = AppendHex (Cursor, Value.Data4[Index], 2);
  }

  *Cursor = 0;
}

STATIC CHAR16
FormatCharacter (IN CONST VOID *Format, IN BOOLEAN UnicodeFormat, IN UINTN Index)
{
  if (UnicodeFormat) {
    return ((CONST CHAR16 *)Format)[Index];
  }

  return (UINT8)((CONST CHAR8 *)Format)[Index];
}

/**
  @return the next argument, a pointer.
**/
STATIC CONST VOID *
NextPointer (IN OUT VA_LIST *Marker)
{
  // VA_ARG holds a branch for narrow integers that casts to the pointer type;
  // pointers never take it.
  return VA_ARG (*Marker, CONST VOID *); // NOLINT(performance-no-int-to-ptr)
}

STATIC UINTN
SaturatedFieldValue (IN UINTN Value)
{
  return MIN (Value, (UINTN)MAXIMUM_FIELD_WIDTH);
}

UINTN
InternalPrintFormat (OUT VOID *Buffer,
                     IN UINTN BufferSize,
                     IN BOOLEAN UnicodeOutput,
                     IN CONST VOID *Format,
                     IN BOOLEAN UnicodeFormat,
                     IN VA_LIST Marker)
{
  PRINT_OUTPUT Output;
  UINTN CharacterSize = UnicodeOutput ? sizeof (CHAR16) : sizeof (CHAR8);
  UINTN Index = 0;

  if (Buffer == nullptr || BufferSize < CharacterSize) {
    return 0;
  }

  Output.Buffer = Buffer;
  Output.Unicode = UnicodeOutput;
  Output.Capacity = BufferSize / CharacterSize - 1;
  Output.Count = 0;

  while (Format != nullptr && !OutputFull (&Output)) {
    CHAR16 Character = FormatCharacter (Format, UnicodeFormat, Index++);
    UINTN Flags = 0;
    UINTN Width = 0;
    UINTN Precision = 0;
    BOOLEAN Done = FALSE;

    if (Character == 0) {
      break;
    }

    if (Character == '\n' || Character == '\r') {
      //
      // "\n", "\r\n" and "\n\r" all end a line with "\r\n"; a lone "\r" stays.
      //
      CHAR16 Next = FormatCharacter (Format, UnicodeFormat, Index);
      if (Character == '\n' || Next == '\n') {
        PutCharacter (&Output, '\r');
        PutCharacter (&Output, '\n');
        if (Next == (Character == '\n' ? '\r' : '\n')) {
          Index++;
        }
      } else {
        PutCharacter (&Output, '\r');
      }

      continue;
    }

    if (Character != '%') {
      PutCharacter (&Output, Character);
      continue;
    }

    //
    // Flags, width and precision, up to the type character.
    //
    while (!Done) {
      Character = FormatCharacter (Format, UnicodeFormat, Index++);
      switch (Character) {
        case '.':
          Flags |= FLAG_PRECISION;
          break;
        case '-':
          Flags |= FLAG_LEFT_JUSTIFY;
          break;
        case '+':
          Flags |= FLAG_PREFIX_SIGN;
          break;
        case ' ':
          Flags |= FLAG_PREFIX_BLANK;
          break;
        case ',':
          Flags |= FLAG_COMMA;
          break;
        case 'l':
        case 'L':
          Flags |= FLAG_LONG;
          break;
        case '*':
          // Taken as 32 bits: callers pass an int as often as a UINTN.
          if ((Flags & FLAG_PRECISION) != 0) {
            Precision = SaturatedFieldValue (VA_ARG (Marker, UINT32));
          } else {
            Width = SaturatedFieldValue (VA_ARG (Marker, UINT32));
          }

          break;
        case '0':
          if ((Flags & FLAG_PRECISION) == 0) {
            Flags |= FLAG_PREFIX_ZERO;
          }

          // fall through
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7':
        case '8':
        case '9': {
          UINTN Value = 0;
          while (Character >= '0' && Character <= '9') {
            Value = SaturatedFieldValue (Value * 10 + (Character - '0'));
            Character = FormatCharacter (Format, UnicodeFormat, Index++);
          }

          Index--;
          if ((Flags & FLAG_PRECISION) != 0) {
            Precision = Value;
          } else {
            Width = Value;
          }

          break;
        }
        default:
          Done = TRUE;
          break;
      }
    }

    UINTN StringLimit = ((Flags & FLAG_PRECISION) != 0) ? Precision : MAX_UINTN;

    switch (Character) {
      case 0:
        //
        // A '%' at the very end: nothing to convert.
        //
        Index--;
        break;

      case 'a': {
        CONST CHAR8 *String = (CONST CHAR8 *)NextPointer (&Marker);
        PRINT_TEXT Text = {String != nullptr ? String : mNullString, FALSE, StringLimit};
        PutText (&Output, &Text, Width, Flags);
        break;
      }

      case 's':
      case 'S': {
        CONST CHAR16 *String = (CONST CHAR16 *)NextPointer (&Marker);
        PRINT_TEXT Text = {String, TRUE, StringLimit};
        if (String == nullptr) {
          Text.Text = mNullString;
          Text.Wide = FALSE;
        }

        PutText (&Output, &Text, Width, Flags);
        break;
      }

      case 'c': {
        CHAR16 Single[2] = {(CHAR16)(VA_ARG (Marker, UINTN) & 0xFFFF), 0};
        PRINT_TEXT Text = {Single, TRUE, 1};
        PutText (&Output, &Text, Width, Flags);
        break;
      }

      case 'g': {
        CONST GUID *Guid = (CONST GUID *)NextPointer (&Marker);
        if (Guid == nullptr) {
          PutAsciiText (&Output, mNullGuid, Width, Flags, StringLimit);
        } else {
          CHAR8 Text[GUID_TEXT_LENGTH + 1];
          GuidToText (Text, Guid);
          PutAsciiText (&Output, Text, Width, Flags, StringLimit);
        }

        break;
      }

      case 'r': {
        RETURN_STATUS Status = VA_ARG (Marker, RETURN_STATUS);
        CONST CHAR8 *Text = InternalStatusText (Status);
        if (Text != nullptr) {
          PutAsciiText (&Output, Text, Width, Flags, StringLimit);
        } else {
          //
          // A status without a name prints as its value, at least eight digits.
          //
          PutNumber (&Output, Status, FALSE, 16, TRUE, FLAG_PRECISION | (Flags & FLAG_LEFT_JUSTIFY), Width, 8);
        }

        break;
      }

      case 'd': {
        INT64 Value = ((Flags & FLAG_LONG) != 0) ? VA_ARG (Marker, INT64) : (INT64)VA_ARG (Marker, INT32);
        UINT64 Magnitude = (Value < 0) ? 0 - (UINT64)Value : (UINT64)Value;
        PutNumber (&Output, Magnitude, (BOOLEAN)(Value < 0), 10, FALSE, Flags, Width, Precision);
        break;
      }

      case 'u':
      case 'x':
      case 'X': {
        UINT64 Value = ((Flags & FLAG_LONG) != 0) ? VA_ARG (Marker, UINT64) : (UINT64)VA_ARG (Marker, UINT32);
        PutNumber (&Output, Value, FALSE, (Character == 'u') ? 10 : 16, (BOOLEAN)(Character == 'X'), Flags, Width,
                   Precision);
        break;
      }

      case 'p': {
        //
        // All sixteen digits, so that pointers line up in a column.
        //
        UINT64 Value = (UINT64)(UINTN)NextPointer (&Marker);
        PutNumber (&Output, Value, FALSE, 16, TRUE, (Flags & FLAG_LEFT_JUSTIFY) | FLAG_PRECISION, Width,
                   sizeof (VOID *) * 2);
        break;
      }

      default: {
        //
        // '%' and any character without a meaning stand for themselves.
        //
        CHAR16 Single[2] = {Character, 0};
        PRINT_TEXT Text = {Single, TRUE, 1};
        PutText (&Output, &Text, Width, Flags);
        break;
      }
    }
  }

  if (Output.Unicode) {
    ((CHAR16 *)Output.Buffer)[Output.Count] = 0;
  } else {
    ((CHAR8 *)Output.Buffer)[Output.Count] = 0;
  }

  return Output.Count;
}
