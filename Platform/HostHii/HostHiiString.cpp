/** @file
  The host HII string protocol: GetString over the registered string packages.

  Reads the block kinds STRING_UCS2, SKIP1, SKIP2 and END; any other kind ends
  the search with EFI_UNSUPPORTED rather than a guess at its length.
**/
#include <cstring>

#include "HostHii.h"
#include "HostHiiStore.h"

namespace {

struct STRING_LOOKUP {
  EFI_STATUS Status;
  const UINT8 *Text; ///< the UCS-2 text, possibly unaligned
  UINTN Size;        ///< bytes, with the terminator
};

UINT32
ReadUint32 (const UINT8 *Bytes)
{
  UINT32 Value;

  std::memcpy (&Value, Bytes, sizeof (Value));
  return Value;
}

bool
LanguageMatches (const CHAR8 *Wanted, const UINT8 *Tag, UINTN TagRoom)
{
  for (UINTN Index = 0; Index < TagRoom; Index++) {
    CHAR8 Left = Wanted[Index];
    CHAR8 Right = (CHAR8)Tag[Index];

    // Language tags compare without regard to case.
    Left = ((Left >= 'A') && (Left <= 'Z')) ? (CHAR8)(Left - 'A' + 'a') : Left;
    Right = ((Right >= 'A') && (Right <= 'Z')) ? (CHAR8)(Right - 'A' + 'a') : Right;
    if (Left != Right) {
      return false;
    }

    if (Left == 0) {
      return true;
    }
  }

  return false;
}

//
// Walks the string blocks of one package, which spans Package[0, Length).
//
STRING_LOOKUP
FindInPackage (const UINT8 *Package, UINTN Length, EFI_STRING_ID StringId)
{
  UINTN Offset = ReadUint32 (Package + OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, StringInfoOffset));
  UINTN CurrentId = 1;

  while ((Offset < Length) && (CurrentId <= StringId)) {
    const UINT8 BlockType = Package[Offset++];

    switch (BlockType) {
      case EFI_HII_SIBT_END:
        return {EFI_NOT_FOUND, nullptr, 0};

      case EFI_HII_SIBT_SKIP1:
        if (Offset + 1 > Length) {
          return {EFI_NOT_FOUND, nullptr, 0};
        }

        CurrentId += Package[Offset];
        Offset += 1;
        break;

      case EFI_HII_SIBT_SKIP2:
        if (Offset + 2 > Length) {
          return {EFI_NOT_FOUND, nullptr, 0};
        }

        CurrentId += (UINTN)Package[Offset] | ((UINTN)Package[Offset + 1] << 8);
        Offset += 2;
        break;

      case EFI_HII_SIBT_STRING_UCS2: {
        const UINTN Start = Offset;

        // The text ends at a zero CHAR16 inside the package, or the package is broken.
        while ((Offset + 2 <= Length) && ((Package[Offset] != 0) || (Package[Offset + 1] != 0))) {
          Offset += 2;
        }

        if (Offset + 2 > Length) {
          return {EFI_NOT_FOUND, nullptr, 0};
        }

        Offset += 2;
        if (CurrentId == StringId) {
          return {EFI_SUCCESS, Package + Start, Offset - Start};
        }

        CurrentId++;
        break;
      }

      default:
        return {EFI_UNSUPPORTED, nullptr, 0};
    }
  }

  return {EFI_NOT_FOUND, nullptr, 0};
}

EFI_STATUS
EFIAPI
HostGetString (IN CONST EFI_HII_STRING_PROTOCOL *This,
               IN CONST CHAR8 *Language,
               IN EFI_HII_HANDLE PackageList,
               IN EFI_STRING_ID StringId,
               OUT EFI_STRING String,
               IN OUT UINTN *StringSize,
               OUT VOID **StringFontInfo OPTIONAL)
{
  EFI_HII_PACKAGE_HEADER Header;

  if ((This == nullptr) || (Language == nullptr) || (StringSize == nullptr) || (StringId == 0) ||
      ((String == nullptr) && (*StringSize != 0))) {
    return EFI_INVALID_PARAMETER;
  }

  const HOST_HII_PACKAGE_LIST *List = HostHiiFindList (PackageList);
  if (List == nullptr) {
    return EFI_NOT_FOUND;
  }

  const UINTN LanguageOffset = OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, Language);
  for (UINTN Offset = sizeof (EFI_HII_PACKAGE_LIST_HEADER); HostHiiPackageAt (*List, Offset, &Header);
       Offset += Header.Length) {
    const UINT8 *Package = List->Bytes.data () + Offset;

    // Registration checked the header: the tag ends inside it.
    if ((Header.Type != EFI_HII_PACKAGE_STRINGS) ||
        !LanguageMatches (Language, Package + LanguageOffset,
                          ReadUint32 (Package + OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, HdrSize)) - LanguageOffset)) {
      continue;
    }

    const STRING_LOOKUP Found = FindInPackage (Package, Header.Length, StringId);
    if (EFI_ERROR (Found.Status)) {
      return Found.Status;
    }

    if ((String == nullptr) || (*StringSize < Found.Size)) {
      *StringSize = Found.Size;
      return EFI_BUFFER_TOO_SMALL;
    }

    std::memcpy (String, Found.Text, Found.Size);
    *StringSize = Found.Size;
    if (StringFontInfo != nullptr) {
      *StringFontInfo = nullptr;
    }

    return EFI_SUCCESS;
  }

  return EFI_NOT_FOUND;
}

EFI_HII_STRING_PROTOCOL
MakeString ()
{
  EFI_HII_STRING_PROTOCOL Protocol{};

  Protocol.GetString = HostGetString;
  return Protocol;
}

EFI_HII_STRING_PROTOCOL mString = MakeString ();

} // namespace

EFI_HII_STRING_PROTOCOL *
HostHiiString (VOID)
{
  return &mString;
}
