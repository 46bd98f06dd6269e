/** @file
  The simulated ResetSystem: every call is recorded, and then it RETURNS to
  its caller. Real firmware never returns from ResetSystem, so code that runs
  after the call runs only in host tests; tests check the record instead.
**/
#ifndef HOST_RESET_H_
#define HOST_RESET_H_

#include <vector>

#include <Uefi.h>

///
/// One ResetSystem call.
///
struct HostResetCall {
  EFI_RESET_TYPE Type;
  EFI_STATUS Status;
  std::vector<UINT8> Data; ///< the ResetData bytes (DataSize of them)
};

class HostReset {
public:
  HostReset () = default;

  HostReset (const HostReset &) = delete;
  HostReset &operator= (const HostReset &) = delete;

  /** @return every ResetSystem call, in order. **/
  const std::vector<HostResetCall> &
  Calls () const
  {
    return mCalls;
  }

  //
  // Used by the platform.
  //

  VOID Publish (EFI_RUNTIME_SERVICES &RuntimeServices);

private:
  static VOID EFIAPI ResetSystemService (IN EFI_RESET_TYPE ResetType,
                                         IN EFI_STATUS ResetStatus,
                                         IN UINTN DataSize,
                                         IN VOID *ResetData);

  std::vector<HostResetCall> mCalls;
};

#endif
