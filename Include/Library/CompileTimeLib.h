/** @file
  Compile-time helpers: GUIDs from their text form and UCS-2 string constants.

  GuidFromText() turns "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX" into an EFI_GUID
  during compilation; a malformed text stops the build. The GUID tables check
  their initialisers against the text form with static_assert, so a mistyped
  byte cannot reach the image.

  CHAR16 is an unsigned short, not char16_t, so a u"" literal cannot be used as
  a CHAR16 string directly. WideString<N> copies it into a CHAR16 array during
  constant initialisation: no code runs before the entry point.
**/
#ifndef KEST_COMPILE_TIME_LIB_H_
#define KEST_COMPILE_TIME_LIB_H_

#include <Uefi.h>

// A build that cannot pass -std=c++17 (EDK II hands a module's C flags to its
// .cpp files too) relies on the compiler's default dialect; say so clearly.
static_assert (__cplusplus >= 201703L, "KestUi's sources are C++17: compile them with -std=c++17 or g++ 11 or later");

namespace CompileTime {

//
// Reached only for a character that is not a hexadecimal digit. It is not
// constexpr, so a malformed text in a constant expression stops the build;
// evaluated at run time (tests), the digit counts as 0.
//
inline UINT8
InvalidGuidCharacter (VOID)
{
  return 0;
}

constexpr UINT8
HexDigit (CHAR8 Character)
{
  return (Character >= '0' && Character <= '9')   ? (UINT8)(Character - '0')
         : (Character >= 'a' && Character <= 'f') ? (UINT8)(Character - 'a' + 10)
         : (Character >= 'A' && Character <= 'F') ? (UINT8)(Character - 'A' + 10)
                                                  : InvalidGuidCharacter ();
}

constexpr UINT64
HexField (const CHAR8 *Text, UINTN Digits)
{
  UINT64 Value = 0;

  for (UINTN Index = 0; Index < Digits; Index++) {
    Value = (Value << 4) | HexDigit (Text[Index]);
  }

  return Value;
}

template <UINTN N>
constexpr EFI_GUID
GuidFromText (const CHAR8 (&Text)[N])
{
  static_assert (N == 37, "a GUID text has 36 characters");
  return EFI_GUID{(UINT32)HexField (Text, 8),
                  (UINT16)HexField (Text + 9, 4),
                  (UINT16)HexField (Text + 14, 4),
                  {(UINT8)HexField (Text + 19, 2), (UINT8)HexField (Text + 21, 2), (UINT8)HexField (Text + 24, 2),
                   (UINT8)HexField (Text + 26, 2), (UINT8)HexField (Text + 28, 2), (UINT8)HexField (Text + 30, 2),
                   (UINT8)HexField (Text + 32, 2), (UINT8)HexField (Text + 34, 2)}};
}

constexpr bool
GuidEqual (const EFI_GUID &First, const EFI_GUID &Second)
{
  if ((First.Data1 != Second.Data1) || (First.Data2 != Second.Data2) || (First.Data3 != Second.Data3)) {
    return false;
  }

  for (UINTN Index = 0; Index < 8; Index++) {
    if (First.Data4[Index] != Second.Data4[Index]) {
      return false;
    }
  }

  return true;
}

///
/// A null-terminated CHAR16 string built from a u"" literal at compile time.
///
template <UINTN N> struct WideString {
  CHAR16 Text[N];

  constexpr UINTN
  Length () const
  {
    return N - 1;
  }
};

template <UINTN N>
constexpr WideString<N>
MakeWideString (const char16_t (&Literal)[N])
{
  WideString<N> Result{};

  for (UINTN Index = 0; Index < N; Index++) {
    Result.Text[Index] = (CHAR16)Literal[Index];
  }

  return Result;
}

} // namespace CompileTime

#endif
