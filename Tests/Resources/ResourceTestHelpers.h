/** @file
  Helpers of the resource tests: little-endian reads, GUIDs from their text
  form, and string lookups through an HII string protocol.
**/
#ifndef RESOURCE_TEST_HELPERS_H_
#define RESOURCE_TEST_HELPERS_H_

#include <Protocol/HiiString.h>
#include <Uefi.h>

#include <array>
#include <cstring>
#include <string>

namespace ResourceTest {

inline UINT32
ReadLe32 (const UINT8 *Bytes)
{
  return (UINT32)Bytes[0] | ((UINT32)Bytes[1] << 8) | ((UINT32)Bytes[2] << 16) | ((UINT32)Bytes[3] << 24);
}

inline UINT16
ReadLe16 (const UINT8 *Bytes)
{
  return (UINT16)(Bytes[0] | (Bytes[1] << 8));
}

/// The 16 bytes of a GUID, as UEFI stores it, from "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX".
inline std::array<UINT8, 16>
GuidBytes (const char *Text)
{
  auto Digit = [] (char Character) { return (Character <= '9') ? Character - '0' : (Character | 0x20) - 'a' + 10; };
  auto Hex = [Text, Digit] (size_t At) { return (UINT8)(Digit (Text[At]) * 16 + Digit (Text[At + 1])); };
  return {Hex (6),  Hex (4),  Hex (2),  Hex (0),  Hex (11), Hex (9),  Hex (16), Hex (14),
          Hex (19), Hex (21), Hex (24), Hex (26), Hex (28), Hex (30), Hex (32), Hex (34)};
}

inline std::array<UINT8, 16>
GuidBytes (const EFI_GUID &Guid)
{
  std::array<UINT8, 16> Bytes{};
  std::memcpy (Bytes.data (), &Guid, sizeof (Guid));
  return Bytes;
}

struct LOOKUP {
  EFI_STATUS Status;
  std::u16string Text;
};

/// GetString with a buffer of the size that the protocol asks for.
inline LOOKUP
LookUp (EFI_HII_STRING_PROTOCOL *Strings, EFI_HII_HANDLE Handle, const char *Language, EFI_STRING_ID Id)
{
  UINTN Size = 0;
  EFI_STATUS Status = Strings->GetString (Strings, Language, Handle, Id, nullptr, &Size, nullptr);

  if (Status != EFI_BUFFER_TOO_SMALL) {
    return {Status, u""};
  }

  std::u16string Buffer (Size / sizeof (CHAR16), u'\xFFFF');
  Status = Strings->GetString (Strings, Language, Handle, Id, (EFI_STRING)Buffer.data (), &Size, nullptr);
  if (EFI_ERROR (Status)) {
    return {Status, u""};
  }

  // The text ends at its terminator, which the returned size includes.
  if ((Size < sizeof (CHAR16)) || (Buffer[Size / sizeof (CHAR16) - 1] != 0)) {
    return {EFI_PROTOCOL_ERROR, u""};
  }

  Buffer.resize (Size / sizeof (CHAR16) - 1);
  return {Status, Buffer};
}

} // namespace ResourceTest

#endif
