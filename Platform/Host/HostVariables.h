/** @file
  Simulated UEFI variables: GetVariable and SetVariable with the statuses
  that UEFI defines, and a history of every SetVariable call per variable
  for tests.

  Names are given to tests as u"" literals; the store keeps them as UCS-2.
**/
#ifndef HOST_VARIABLES_H_
#define HOST_VARIABLES_H_

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <Uefi.h>

#include "HostGuid.h"

///
/// A stored variable.
///
struct HostVariable {
  UINT32 Attributes;
  std::vector<UINT8> Data;
};

///
/// One SetVariable call. A DataSize of 0 (or no access attribute) is a delete.
///
struct HostVariableWrite {
  UINT32 Attributes;
  std::vector<UINT8> Data;
  EFI_STATUS Status; ///< what the call returned
};

class HostVariables {
public:
  HostVariables () = default;

  HostVariables (const HostVariables &) = delete;
  HostVariables &operator= (const HostVariables &) = delete;

  /** Stores a variable as the platform's own (no history entry, no call counted). **/
  VOID Seed (const char16_t *Name, const EFI_GUID &Guid, UINT32 Attributes, const VOID *Data, UINTN Size);

  template <typename T>
  VOID
  SeedValue (const char16_t *Name, const EFI_GUID &Guid, UINT32 Attributes, const T &Value)
  {
    Seed (Name, Guid, Attributes, &Value, sizeof (Value));
  }

  /** @return the stored variable, or null when it does not exist. **/
  const HostVariable *Find (const char16_t *Name, const EFI_GUID &Guid) const;

  /** @return the SetVariable calls for this variable, oldest first (empty if none). **/
  const std::vector<HostVariableWrite> &Writes (const char16_t *Name, const EFI_GUID &Guid) const;

  /** @return how many variables exist. **/
  UINTN
  Count () const
  {
    return mStore.size ();
  }

  //
  // Used by the platform.
  //

  VOID Publish (EFI_RUNTIME_SERVICES &RuntimeServices);

private:
  using Key = std::pair<EFI_GUID, std::u16string>;

  struct KeyLess {
    bool
    operator() (const Key &First, const Key &Second) const
    {
      if (!HostGuidEqual (First.first, Second.first)) {
        return HostGuidLess () (First.first, Second.first);
      }

      return First.second < Second.second;
    }
  };

  static EFI_STATUS EFIAPI GetVariableService (
    IN CHAR16 *VariableName, IN EFI_GUID *VendorGuid, OUT UINT32 *Attributes, IN OUT UINTN *DataSize, OUT VOID *Data);
  static EFI_STATUS EFIAPI SetVariableService (
    IN CHAR16 *VariableName, IN EFI_GUID *VendorGuid, IN UINT32 Attributes, IN UINTN DataSize, IN VOID *Data);

  static Key MakeKey (const CHAR16 *Name, const EFI_GUID &Guid);
  static Key MakeKey (const char16_t *Name, const EFI_GUID &Guid);

  EFI_STATUS Get (const Key &Name, UINT32 *Attributes, UINTN *DataSize, VOID *Data) const;
  EFI_STATUS Set (const Key &Name, UINT32 Attributes, UINTN DataSize, const VOID *Data);

  std::map<Key, HostVariable, KeyLess> mStore;
  std::map<Key, std::vector<HostVariableWrite>, KeyLess> mWrites;
};

#endif
