/** @file
  Simulated pool with an account of every live buffer.
**/
#include "HostPool.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "HostPlatform.h"

namespace {

constexpr UINTN MaxSize = (UINTN)1 << 30; ///< 1 GiB

} // namespace

HostPool::~HostPool ()
{
  for (auto &Entry : mLive) {
    std::free (Entry.second.Address);
  }
}

UINTN
HostPool::LiveCount () const
{
  return mLive.size ();
}

std::vector<HostPoolBuffer>
HostPool::LiveBuffers () const
{
  std::vector<HostPoolBuffer> Buffers;

  Buffers.reserve (mLive.size ());
  for (const auto &Entry : mLive) {
    Buffers.push_back (Entry.second);
  }

  std::sort (Buffers.begin (), Buffers.end (),
             [] (const HostPoolBuffer &First, const HostPoolBuffer &Second) { return First.Number < Second.Number; });
  return Buffers;
}

const HostPoolBuffer *
HostPool::Find (const VOID *Address) const
{
  auto Found = mLive.find (Address);
  return (Found == mLive.end ()) ? nullptr : &Found->second;
}

UINT64
HostPool::AllocationCount () const
{
  return mPlatform.Calls ().Count (HostService::AllocatePool);
}

VOID
HostPool::FailAllocation (UINT64 Nth)
{
  mPlatform.Calls ().FailNth (HostService::AllocatePool, EFI_OUT_OF_RESOURCES, Nth);
}

VOID
HostPool::FailAllocationsAfter (UINT64 Successes)
{
  mPlatform.Calls ().FailAllAfter (HostService::AllocatePool, EFI_OUT_OF_RESOURCES, Successes);
}

VOID
HostPool::StopFailing ()
{
  mPlatform.Calls ().StopFailing (HostService::AllocatePool);
}

EFI_STATUS
HostPool::AllocateForCaller (IN EFI_MEMORY_TYPE PoolType, IN UINTN Size, OUT VOID **Buffer)
{
  if (auto Failure = mPlatform.Calls ().Enter (HostService::AllocatePool)) {
    return *Failure;
  }

  UINT64 Number = mPlatform.Calls ().Count (HostService::AllocatePool);

  //
  // The types a driver may allocate: the firmware's own, and the OEM and OS ranges.
  //
  bool ValidType = ((PoolType < EfiMaxMemoryType) && (PoolType != EfiConventionalMemory) &&
                    (PoolType != EfiPersistentMemory) && (PoolType != EfiUnacceptedMemoryType)) ||
                   ((UINT32)PoolType >= 0x70000000U);
  if ((Buffer == nullptr) || !ValidType) {
    return EFI_INVALID_PARAMETER;
  }

  *Buffer = nullptr;

  //
  // No firmware has this much pool, and AddressSanitizer aborts on a giant
  // malloc instead of failing it: a size computed from a bad count must get
  // the status real firmware gives.
  //
  if (Size > MaxSize) {
    return EFI_OUT_OF_RESOURCES;
  }

  VOID *Address = std::malloc ((Size == 0) ? 1 : Size);
  if (Address == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  std::memset (Address, FillPattern, (Size == 0) ? 1 : Size);
  mFreed.erase (Address);
  mLive[Address] = HostPoolBuffer{Address, Size, PoolType, Number};
  *Buffer = Address;
  return EFI_SUCCESS;
}

EFI_STATUS
HostPool::Free (VOID *Buffer)
{
  auto Found = mLive.find (Buffer);
  if (Found == mLive.end ()) {
    auto Freed = mFreed.find (Buffer);
    if (Freed != mFreed.end ()) {
      mPlatform.RecordError ("FreePool: buffer of allocation " + std::to_string (Freed->second) +
                             " freed a second time");
    } else if (Buffer == nullptr) {
      mPlatform.RecordError ("FreePool: null pointer");
    } else {
      mPlatform.RecordError ("FreePool: pointer that pool did not hand out");
    }

    return EFI_INVALID_PARAMETER;
  }

  mFreed[Buffer] = Found->second.Number;
  mLive.erase (Found);
  std::free (Buffer);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostPool::AllocatePoolService (IN EFI_MEMORY_TYPE PoolType, IN UINTN Size, OUT VOID **Buffer)
{
  return HostPlatform::Current ().Pool ().AllocateForCaller (PoolType, Size, Buffer);
}

EFI_STATUS EFIAPI
HostPool::FreePoolService (IN VOID *Buffer)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::FreePool)) {
    return *Failure;
  }

  return Platform.Pool ().Free (Buffer);
}

VOID
HostPool::Publish (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.AllocatePool = AllocatePoolService;
  BootServices.FreePool = FreePoolService;
}
