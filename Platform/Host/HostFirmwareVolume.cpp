/** @file
  Simulated firmware volume: ReadFile and ReadSection of the firmware volume
  protocol (version 2) over files held in memory, with the protocol's own
  buffer rules.
**/
#include <algorithm>
#include <cstring>

#include "HostPlatform.h"
#include "HostVolumes.h"

namespace {

constexpr UINTN mMaxSectionSize = 0xFFFFFF; ///< the 24-bit size of a common section header

} // namespace

HostFirmwareVolume::HostFirmwareVolume ()
{
  mProtocol.ReadFile = ReadFileService;
  mProtocol.ReadSection = ReadSectionService;
  mProtocol.KeySize = sizeof (UINTN);
}

HostFirmwareVolume &
HostFirmwareVolume::AddRawFile (const EFI_GUID &Name, const std::vector<UINT8> &Data)
{
  mFiles[Name] = File{EFI_FV_FILETYPE_RAW, Data, std::nullopt};
  return *this;
}

HostFirmwareVolume &
HostFirmwareVolume::AddFileWithRawSection (const EFI_GUID &Name, const std::vector<UINT8> &Data)
{
  UINTN SectionSize = sizeof (EFI_COMMON_SECTION_HEADER) + Data.size ();

  if (SectionSize > mMaxSectionSize) {
    HostPlatform::Current ().RecordError ("AddFileWithRawSection: the section does not fit a 24-bit size");
    return *this;
  }

  EFI_COMMON_SECTION_HEADER Header = {{(UINT8)SectionSize, (UINT8)(SectionSize >> 8), (UINT8)(SectionSize >> 16)},
                                      EFI_SECTION_RAW};
  std::vector<UINT8> Contents (sizeof (Header));
  std::memcpy (Contents.data (), &Header, sizeof (Header));
  Contents.insert (Contents.end (), Data.begin (), Data.end ());
  mFiles[Name] = File{EFI_FV_FILETYPE_FREEFORM, Contents, Data};
  return *this;
}

VOID
HostFirmwareVolume::Answer (HostVolumeCall Call, const HostFvAnswer &Answer)
{
  mAnswers[(size_t)Call].push_back (Answer);
}

EFI_STATUS
HostFirmwareVolume::Deliver (const std::vector<UINT8> &Data, VOID **Buffer, UINTN *BufferSize)
{
  //
  // A null *Buffer: the volume allocates it from pool. Else the caller's
  // buffer of *BufferSize bytes takes what fits.
  //
  if (*Buffer == nullptr) {
    EFI_STATUS Status = HostPlatform::Current ().Pool ().AllocateForCaller (EfiBootServicesData, Data.size (), Buffer);
    if (EFI_ERROR (Status)) {
      *Buffer = nullptr;
      return EFI_OUT_OF_RESOURCES;
    }

    if (!Data.empty ()) {
      std::memcpy (*Buffer, Data.data (), Data.size ());
    }

    *BufferSize = Data.size ();
    return EFI_SUCCESS;
  }

  UINTN Count = std::min<UINTN> (*BufferSize, Data.size ());
  if (Count > 0) {
    std::memcpy (*Buffer, Data.data (), Count);
  }

  if (Count < Data.size ()) {
    return EFI_WARN_BUFFER_TOO_SMALL;
  }

  *BufferSize = Data.size ();
  return EFI_SUCCESS;
}

std::optional<EFI_STATUS>
HostFirmwareVolume::Scripted (HostVolumeCall Call, VOID **Buffer, UINTN *BufferSize)
{
  std::deque<HostFvAnswer> &Queue = mAnswers[(size_t)Call];

  if (Queue.empty ()) {
    return std::nullopt;
  }

  HostFvAnswer Answer = Queue.front ();
  Queue.pop_front ();

  //
  // A volume allocates nothing when it fails; the answer's buffer is given
  // only with a status that is not an error.
  //
  if (Answer.GiveBuffer && !EFI_ERROR (Answer.Status) && (Buffer != nullptr)) {
    VOID *Data = nullptr;
    if (EFI_ERROR (HostPlatform::Current ().Pool ().AllocateForCaller (EfiBootServicesData, Answer.Size, &Data))) {
      return EFI_OUT_OF_RESOURCES;
    }

    UINTN Count = std::min<UINTN> (Answer.Size, Answer.Data.size ());
    std::memset (Data, 0, Answer.Size);
    if (Count > 0) {
      std::memcpy (Data, Answer.Data.data (), Count);
    }

    *Buffer = Data;
  }

  if (BufferSize != nullptr) {
    *BufferSize = Answer.Size;
  }

  return Answer.Status;
}

EFI_STATUS EFIAPI
HostFirmwareVolume::ReadFileService (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                     IN CONST EFI_GUID *NameGuid,
                                     IN OUT VOID **Buffer,
                                     IN OUT UINTN *BufferSize,
                                     OUT EFI_FV_FILETYPE *FoundType,
                                     OUT EFI_FV_FILE_ATTRIBUTES *FileAttributes,
                                     OUT UINT32 *AuthenticationStatus)
{
  HostVolumes::CheckTpl ("EFI_FIRMWARE_VOLUME2_PROTOCOL.ReadFile", TPL_NOTIFY);
  HostFirmwareVolume *Volume = HostPlatform::Current ().Volumes ().FindFirmwareVolume (This);
  if (Volume == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  HostFvRead &Record =
    Volume->mReads.emplace_back (HostFvRead{HostVolumeCall::ReadFile, (NameGuid != nullptr) ? *NameGuid : EFI_GUID{}, 0,
                                            0, (Buffer == nullptr) || (*Buffer == nullptr), EFI_SUCCESS});

  if (auto Failure = Volume->Enter (HostVolumeCall::ReadFile)) {
    Record.Status = *Failure;
  } else if (auto Answer = Volume->Scripted (HostVolumeCall::ReadFile, Buffer, BufferSize)) {
    Record.Status = *Answer;
  } else if (NameGuid == nullptr) {
    Record.Status = EFI_INVALID_PARAMETER;
  } else {
    Record.Status = Volume->ReadFile (*NameGuid, Buffer, BufferSize, FoundType, FileAttributes, AuthenticationStatus);
  }

  return Record.Status;
}

EFI_STATUS
HostFirmwareVolume::ReadFile (const EFI_GUID &NameGuid,
                              VOID **Buffer,
                              UINTN *BufferSize,
                              EFI_FV_FILETYPE *FoundType,
                              EFI_FV_FILE_ATTRIBUTES *FileAttributes,
                              UINT32 *AuthenticationStatus)
{
  if ((BufferSize == nullptr) || (FoundType == nullptr) || (FileAttributes == nullptr) ||
      (AuthenticationStatus == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  auto Found = mFiles.find (NameGuid);
  if (Found == mFiles.end ()) {
    return EFI_NOT_FOUND;
  }

  *FoundType = Found->second.Type;
  *FileAttributes = 0;
  *AuthenticationStatus = 0;

  //
  // A null Buffer asks for the type, attributes and size only.
  //
  if (Buffer == nullptr) {
    *BufferSize = Found->second.Contents.size ();
    return EFI_SUCCESS;
  }

  return Deliver (Found->second.Contents, Buffer, BufferSize);
}

EFI_STATUS EFIAPI
HostFirmwareVolume::ReadSectionService (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                        IN CONST EFI_GUID *NameGuid,
                                        IN EFI_SECTION_TYPE SectionType,
                                        IN UINTN SectionInstance,
                                        IN OUT VOID **Buffer,
                                        IN OUT UINTN *BufferSize,
                                        OUT UINT32 *AuthenticationStatus)
{
  HostVolumes::CheckTpl ("EFI_FIRMWARE_VOLUME2_PROTOCOL.ReadSection", TPL_NOTIFY);
  HostFirmwareVolume *Volume = HostPlatform::Current ().Volumes ().FindFirmwareVolume (This);
  if (Volume == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  HostFvRead &Record = Volume->mReads.emplace_back (
    HostFvRead{HostVolumeCall::ReadSection, (NameGuid != nullptr) ? *NameGuid : EFI_GUID{}, SectionType,
               SectionInstance, (Buffer == nullptr) || (*Buffer == nullptr), EFI_SUCCESS});

  if (auto Failure = Volume->Enter (HostVolumeCall::ReadSection)) {
    Record.Status = *Failure;
  } else if (auto Answer = Volume->Scripted (HostVolumeCall::ReadSection, Buffer, BufferSize)) {
    Record.Status = *Answer;
  } else if (NameGuid == nullptr) {
    Record.Status = EFI_INVALID_PARAMETER;
  } else {
    Record.Status =
      Volume->ReadSection (*NameGuid, SectionType, SectionInstance, Buffer, BufferSize, AuthenticationStatus);
  }

  return Record.Status;
}

EFI_STATUS
HostFirmwareVolume::ReadSection (const EFI_GUID &NameGuid,
                                 EFI_SECTION_TYPE SectionType,
                                 UINTN SectionInstance,
                                 VOID **Buffer,
                                 UINTN *BufferSize,
                                 UINT32 *AuthenticationStatus)
{
  if ((Buffer == nullptr) || (BufferSize == nullptr) || (AuthenticationStatus == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  auto Found = mFiles.find (NameGuid);
  if (Found == mFiles.end ()) {
    return EFI_NOT_FOUND;
  }

  //
  // Each simulated file has at most one section, a raw one.
  //
  if (!Found->second.RawSection.has_value () || (SectionType != EFI_SECTION_RAW) || (SectionInstance != 0)) {
    return EFI_NOT_FOUND;
  }

  *AuthenticationStatus = 0;
  return Deliver (*Found->second.RawSection, Buffer, BufferSize);
}
