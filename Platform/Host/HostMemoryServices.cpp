/** @file
  The memory services of the boot services table: CopyMem, SetMem and
  CalculateCrc32, and the CRC32 that seals the tables' headers.
**/
#include <array>
#include <cstring>

#include "HostPlatform.h"
#include "HostPlatformInternal.h"

namespace {

constexpr std::array<UINT32, 256>
MakeCrcTable ()
{
  std::array<UINT32, 256> Table{};

  for (UINT32 Index = 0; Index < 256; Index++) {
    UINT32 Value = Index;
    for (UINT32 Bit = 0; Bit < 8; Bit++) {
      Value = ((Value & 1) != 0) ? (0xEDB88320U ^ (Value >> 1)) : (Value >> 1);
    }

    Table[Index] = Value;
  }

  return Table;
}

constexpr std::array<UINT32, 256> mCrcTable = MakeCrcTable ();

VOID EFIAPI
CopyMemService (IN VOID *Destination, IN VOID *Source, IN UINTN Length)
{
  HostPlatform::Current ().Calls ().Enter (HostService::CopyMem);
  if (Length != 0) {
    std::memmove (Destination, Source, Length); // the buffers may overlap
  }
}

VOID EFIAPI
SetMemService (IN VOID *Buffer, IN UINTN Size, IN UINT8 Value)
{
  HostPlatform::Current ().Calls ().Enter (HostService::SetMem);
  if (Size != 0) {
    std::memset (Buffer, Value, Size);
  }
}

EFI_STATUS EFIAPI
CalculateCrc32Service (IN VOID *Data, IN UINTN DataSize, OUT UINT32 *Crc32)
{
  if (auto Failure = HostPlatform::Current ().Calls ().Enter (HostService::CalculateCrc32)) {
    return *Failure;
  }

  if ((Data == nullptr) || (DataSize == 0) || (Crc32 == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  *Crc32 = HostCrc32 (Data, DataSize);
  return EFI_SUCCESS;
}

} // namespace

UINT32
HostCrc32 (const VOID *Data, UINTN Size)
{
  const UINT8 *Bytes = static_cast<const UINT8 *> (Data);
  UINT32 Crc = 0xFFFFFFFFU;

  for (UINTN Index = 0; Index < Size; Index++) {
    Crc = mCrcTable[(Crc ^ Bytes[Index]) & 0xFF] ^ (Crc >> 8);
  }

  return Crc ^ 0xFFFFFFFFU;
}

VOID
HostPublishMemoryServices (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.CopyMem = CopyMemService;
  BootServices.SetMem = SetMemService;
  BootServices.CalculateCrc32 = CalculateCrc32Service;
}
