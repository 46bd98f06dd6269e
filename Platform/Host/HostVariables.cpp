/** @file
  Simulated UEFI variables.
**/
#include "HostVariables.h"

#include <cstring>

#include "HostPlatform.h"

namespace {

constexpr UINT32 mAccessAttributes = EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
constexpr UINT32 mKnownAttributes = EFI_VARIABLE_NON_VOLATILE | mAccessAttributes;

} // namespace

HostVariables::Key
HostVariables::MakeKey (const CHAR16 *Name, const EFI_GUID &Guid)
{
  std::u16string Text;

  for (const CHAR16 *Character = Name; *Character != 0; Character++) {
    Text.push_back ((char16_t)*Character);
  }

  return Key (Guid, Text);
}

HostVariables::Key
HostVariables::MakeKey (const char16_t *Name, const EFI_GUID &Guid)
{
  return Key (Guid, std::u16string (Name));
}

VOID
HostVariables::Seed (const char16_t *Name, const EFI_GUID &Guid, UINT32 Attributes, const VOID *Data, UINTN Size)
{
  const UINT8 *Bytes = static_cast<const UINT8 *> (Data);
  mStore[MakeKey (Name, Guid)] = HostVariable{Attributes, std::vector<UINT8> (Bytes, Bytes + Size)};
}

const HostVariable *
HostVariables::Find (const char16_t *Name, const EFI_GUID &Guid) const
{
  auto Found = mStore.find (MakeKey (Name, Guid));
  return (Found == mStore.end ()) ? nullptr : &Found->second;
}

const std::vector<HostVariableWrite> &
HostVariables::Writes (const char16_t *Name, const EFI_GUID &Guid) const
{
  static const std::vector<HostVariableWrite> mNone;

  auto Found = mWrites.find (MakeKey (Name, Guid));
  return (Found == mWrites.end ()) ? mNone : Found->second;
}

EFI_STATUS
HostVariables::Get (const Key &Name, UINT32 *Attributes, UINTN *DataSize, VOID *Data) const
{
  auto Found = mStore.find (Name);

  if (Found == mStore.end ()) {
    return EFI_NOT_FOUND;
  }

  const HostVariable &Variable = Found->second;
  if (Attributes != nullptr) {
    *Attributes = Variable.Attributes; // returned with EFI_BUFFER_TOO_SMALL as well
  }

  if (*DataSize < Variable.Data.size ()) {
    *DataSize = Variable.Data.size ();
    return EFI_BUFFER_TOO_SMALL;
  }

  if (!Variable.Data.empty ()) {
    if (Data == nullptr) {
      return EFI_INVALID_PARAMETER;
    }

    std::memcpy (Data, Variable.Data.data (), Variable.Data.size ());
  }

  *DataSize = Variable.Data.size ();
  return EFI_SUCCESS;
}

EFI_STATUS
HostVariables::Set (const Key &Name, UINT32 Attributes, UINTN DataSize, const VOID *Data)
{
  if (Name.second.empty () || ((DataSize != 0) && (Data == nullptr)) || ((Attributes & ~mKnownAttributes) != 0) ||
      ((Attributes & (mAccessAttributes)) == EFI_VARIABLE_RUNTIME_ACCESS)) {
    return EFI_INVALID_PARAMETER;
  }

  auto Found = mStore.find (Name);

  //
  // No data, or no access attribute, deletes.
  //
  if ((DataSize == 0) || ((Attributes & mAccessAttributes) == 0)) {
    if (Found == mStore.end ()) {
      return EFI_NOT_FOUND;
    }

    mStore.erase (Found);
    return EFI_SUCCESS;
  }

  if ((Found != mStore.end ()) && (Found->second.Attributes != Attributes)) {
    return EFI_INVALID_PARAMETER;
  }

  const UINT8 *Bytes = static_cast<const UINT8 *> (Data);
  mStore[Name] = HostVariable{Attributes, std::vector<UINT8> (Bytes, Bytes + DataSize)};
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostVariables::GetVariableService (
  IN CHAR16 *VariableName, IN EFI_GUID *VendorGuid, OUT UINT32 *Attributes, IN OUT UINTN *DataSize, OUT VOID *Data)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::GetVariable, VendorGuid)) {
    return *Failure;
  }

  if ((VariableName == nullptr) || (VendorGuid == nullptr) || (DataSize == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  return Platform.Variables ().Get (MakeKey (VariableName, *VendorGuid), Attributes, DataSize, Data);
}

EFI_STATUS EFIAPI
HostVariables::SetVariableService (
  IN CHAR16 *VariableName, IN EFI_GUID *VendorGuid, IN UINT32 Attributes, IN UINTN DataSize, IN VOID *Data)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostVariables &Variables = Platform.Variables ();

  std::optional<EFI_STATUS> Failure = Platform.Calls ().Enter (HostService::SetVariable, VendorGuid);
  if ((VariableName == nullptr) || (VendorGuid == nullptr)) {
    return Failure.value_or (EFI_INVALID_PARAMETER);
  }

  //
  // Every call with a name is recorded, an injected failure too.
  //
  Key Name = MakeKey (VariableName, *VendorGuid);
  EFI_STATUS Status = Failure.has_value () ? *Failure : Variables.Set (Name, Attributes, DataSize, Data);

  HostVariableWrite Write = {Attributes, {}, Status};
  if ((Data != nullptr) && (DataSize != 0)) {
    const UINT8 *Bytes = static_cast<const UINT8 *> (Data);
    Write.Data.assign (Bytes, Bytes + DataSize);
  }

  Variables.mWrites[Name].push_back (Write);
  return Status;
}

VOID
HostVariables::Publish (EFI_RUNTIME_SERVICES &RuntimeServices)
{
  RuntimeServices.GetVariable = GetVariableService;
  RuntimeServices.SetVariable = SetVariableService;
}
