/** @file
  GUID helpers of the host platform: ordering, equality and text, for
  containers keyed by GUID and for messages.
**/
#ifndef HOST_GUID_H_
#define HOST_GUID_H_

#include <cstring>
#include <string>

#include <Uefi.h>

///
/// Strict ordering of GUIDs, so that they can key ordered containers.
///
struct HostGuidLess {
  bool
  operator() (const EFI_GUID &First, const EFI_GUID &Second) const
  {
    return std::memcmp (&First, &Second, sizeof (EFI_GUID)) < 0;
  }
};

inline bool
HostGuidEqual (const EFI_GUID &First, const EFI_GUID &Second)
{
  return std::memcmp (&First, &Second, sizeof (EFI_GUID)) == 0;
}

/** @return Guid in its registry form, e.g. for messages. **/
std::string HostGuidText (const EFI_GUID &Guid);

#endif
