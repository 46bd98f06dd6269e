/** @file
  Simulated pool: AllocatePool and FreePool with an account of every live
  buffer. New buffers are filled with a non-zero pattern, so that code which
  forgets to zero them is caught. Freeing a pointer that pool did not hand out,
  or one freed already, is recorded as a platform error.
**/
#ifndef HOST_POOL_H_
#define HOST_POOL_H_

#include <map>
#include <vector>

#include <Uefi.h>

class HostPlatform;

///
/// One pool buffer.
///
struct HostPoolBuffer {
  VOID *Address;
  UINTN Size;
  EFI_MEMORY_TYPE Type;
  UINT64 Number; ///< the AllocatePool call that made it (1 for the first call)
};

class HostPool {
public:
  static constexpr UINT8 FillPattern = 0xAF; ///< every byte of a new buffer

  explicit HostPool (HostPlatform &Platform) : mPlatform (Platform)
  {}

  ~HostPool ();
  HostPool (const HostPool &) = delete;
  HostPool &operator= (const HostPool &) = delete;

  /** @return how many buffers are allocated and not freed. **/
  UINTN LiveCount () const;

  /** @return the live buffers, oldest first. **/
  std::vector<HostPoolBuffer> LiveBuffers () const;

  /** @return the live buffer that starts at Address, or null. **/
  const HostPoolBuffer *Find (const VOID *Address) const;

  /** @return AllocatePool calls so far, failed ones included. **/
  UINT64 AllocationCount () const;

  /** Makes the Nth AllocatePool call from now (1: the next one) fail with EFI_OUT_OF_RESOURCES. **/
  void FailAllocation (UINT64 Nth = 1);

  /** Lets Successes more allocations through, then fails every later one with EFI_OUT_OF_RESOURCES. **/
  void FailAllocationsAfter (UINT64 Successes);

  /** Ends the failures set with FailAllocation and FailAllocationsAfter. **/
  void StopFailing ();

  //
  // Used by the platform.
  //

  /** Allocates a buffer that the caller owns and must free: counted as an AllocatePool call. **/
  EFI_STATUS AllocateForCaller (IN EFI_MEMORY_TYPE PoolType, IN UINTN Size, OUT VOID **Buffer);

  VOID Publish (EFI_BOOT_SERVICES &BootServices);

private:
  static EFI_STATUS EFIAPI AllocatePoolService (IN EFI_MEMORY_TYPE PoolType, IN UINTN Size, OUT VOID **Buffer);
  static EFI_STATUS EFIAPI FreePoolService (IN VOID *Buffer);

  EFI_STATUS Free (VOID *Buffer);

  HostPlatform &mPlatform;
  std::map<const VOID *, HostPoolBuffer> mLive;
  std::map<const VOID *, UINT64> mFreed; ///< freed addresses (until reused), for the double-free message
};

#endif
