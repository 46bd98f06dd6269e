/** @file
  The host HII database: registration and removal of package lists.
**/
#include <cstring>
#include <map>
#include <memory>

#include "HostHii.h"
#include "HostHiiStore.h"

namespace {

//
// The handle of a list is the address of its record, so handles stay unique
// while the list is registered.
//
std::map<EFI_HII_HANDLE, std::unique_ptr<HOST_HII_PACKAGE_LIST>> mLists;
EFI_STATUS mNewPackageListFailure = EFI_SUCCESS;
UINTN mNewPackageListCalls = 0;

EFI_HII_PACKAGE_HEADER
ReadPackageHeader (const UINT8 *Bytes)
{
  EFI_HII_PACKAGE_HEADER Header;

  std::memcpy (&Header, Bytes, sizeof (Header));
  return Header;
}

UINT32
ReadUint32 (const UINT8 *Bytes)
{
  UINT32 Value;

  std::memcpy (&Value, Bytes, sizeof (Value));
  return Value;
}

//
// A string package needs a header that holds its NUL-terminated language tag,
// and string information that starts inside the package.
//
bool
IsValidStringPackage (const UINT8 *Package, UINT32 Length)
{
  const UINTN LanguageOffset = OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, Language);

  if (Length <= LanguageOffset) {
    return false;
  }

  const UINT32 HeaderSize = ReadUint32 (Package + OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, HdrSize));
  const UINT32 StringInfoOffset = ReadUint32 (Package + OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, StringInfoOffset));
  if ((HeaderSize <= LanguageOffset) || (HeaderSize > Length) || (StringInfoOffset < HeaderSize) ||
      (StringInfoOffset > Length)) {
    return false;
  }

  return std::memchr (Package + LanguageOffset, 0, HeaderSize - LanguageOffset) != nullptr;
}

//
// Packages must tile the list exactly, the end package last.
//
bool
IsValidPackageList (const UINT8 *List, UINT32 ListLength)
{
  UINT32 Offset = sizeof (EFI_HII_PACKAGE_LIST_HEADER);

  while (ListLength - Offset >= sizeof (EFI_HII_PACKAGE_HEADER)) {
    const EFI_HII_PACKAGE_HEADER Header = ReadPackageHeader (List + Offset);

    if ((Header.Length < sizeof (EFI_HII_PACKAGE_HEADER)) || (Header.Length > ListLength - Offset)) {
      return false;
    }

    if (Header.Type == EFI_HII_PACKAGE_END) {
      return (Header.Length == sizeof (EFI_HII_PACKAGE_HEADER)) && (Offset + Header.Length == ListLength);
    }

    if ((Header.Type == EFI_HII_PACKAGE_STRINGS) && !IsValidStringPackage (List + Offset, Header.Length)) {
      return false;
    }

    Offset += Header.Length;
  }

  return false;
}

bool
IsGuidRegistered (const EFI_GUID &Guid)
{
  for (const auto &Entry : mLists) {
    if (std::memcmp (Entry.second->Bytes.data (), &Guid, sizeof (Guid)) == 0) {
      return true;
    }
  }

  return false;
}

EFI_STATUS
EFIAPI
HostNewPackageList (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                    IN CONST EFI_HII_PACKAGE_LIST_HEADER *PackageList,
                    IN EFI_HANDLE DriverHandle OPTIONAL,
                    OUT EFI_HII_HANDLE *Handle)
{
  EFI_HII_PACKAGE_LIST_HEADER ListHeader;

  mNewPackageListCalls++;
  if ((This == nullptr) || (PackageList == nullptr) || (Handle == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  *Handle = nullptr;
  if (EFI_ERROR (mNewPackageListFailure)) {
    return mNewPackageListFailure;
  }

  std::memcpy (&ListHeader, PackageList, sizeof (ListHeader));
  if ((ListHeader.PackageLength < sizeof (ListHeader) + sizeof (EFI_HII_PACKAGE_HEADER)) ||
      !IsValidPackageList ((const UINT8 *)PackageList, ListHeader.PackageLength)) {
    return EFI_INVALID_PARAMETER;
  }

  // As in the firmware, one list per package-list GUID.
  if (IsGuidRegistered (ListHeader.PackageListGuid)) {
    return EFI_INVALID_PARAMETER;
  }

  auto Record = std::make_unique<HOST_HII_PACKAGE_LIST> ();
  const UINT8 *Bytes = (const UINT8 *)PackageList;
  Record->DriverHandle = DriverHandle;
  Record->Bytes.assign (Bytes, Bytes + ListHeader.PackageLength);
  *Handle = (EFI_HII_HANDLE)Record.get ();
  mLists.emplace (*Handle, std::move (Record));
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
HostRemovePackageList (IN CONST EFI_HII_DATABASE_PROTOCOL *This, IN EFI_HII_HANDLE Handle)
{
  if (This == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  return (mLists.erase (Handle) == 1) ? EFI_SUCCESS : EFI_NOT_FOUND;
}

EFI_HII_DATABASE_PROTOCOL
MakeDatabase ()
{
  EFI_HII_DATABASE_PROTOCOL Protocol{};

  Protocol.NewPackageList = HostNewPackageList;
  Protocol.RemovePackageList = HostRemovePackageList;
  return Protocol;
}

EFI_HII_DATABASE_PROTOCOL mDatabase = MakeDatabase ();

} // namespace

const HOST_HII_PACKAGE_LIST *
HostHiiFindList (EFI_HII_HANDLE Handle)
{
  const auto Found = mLists.find (Handle);

  return (Found == mLists.end ()) ? nullptr : Found->second.get ();
}

bool
HostHiiPackageAt (const HOST_HII_PACKAGE_LIST &List, UINTN Offset, EFI_HII_PACKAGE_HEADER *Header)
{
  if ((Offset > List.Bytes.size ()) || (List.Bytes.size () - Offset < sizeof (*Header))) {
    return false;
  }

  *Header = ReadPackageHeader (List.Bytes.data () + Offset);
  return (Header->Type != EFI_HII_PACKAGE_END) && (Header->Length >= sizeof (*Header)) &&
         (Header->Length <= List.Bytes.size () - Offset);
}

EFI_HII_DATABASE_PROTOCOL *
HostHiiDatabase (VOID)
{
  return &mDatabase;
}

VOID
HostHiiFailNewPackageList (IN EFI_STATUS Status)
{
  mNewPackageListFailure = Status;
}

UINTN
HostHiiNewPackageListCallCount (VOID)
{
  return mNewPackageListCalls;
}

UINTN
HostHiiPackageListCount (VOID)
{
  return mLists.size ();
}

CONST EFI_HII_PACKAGE_LIST_HEADER *
HostHiiPackageList (IN EFI_HII_HANDLE Handle)
{
  const HOST_HII_PACKAGE_LIST *List = HostHiiFindList (Handle);

  return (List == nullptr) ? nullptr : (const EFI_HII_PACKAGE_LIST_HEADER *)List->Bytes.data ();
}

EFI_HANDLE
HostHiiDriverHandle (IN EFI_HII_HANDLE Handle)
{
  const HOST_HII_PACKAGE_LIST *List = HostHiiFindList (Handle);

  return (List == nullptr) ? nullptr : List->DriverHandle;
}

VOID
HostHiiForgetPackageLists (VOID)
{
  mLists.clear ();
  mNewPackageListFailure = EFI_SUCCESS;
  mNewPackageListCalls = 0;
}
