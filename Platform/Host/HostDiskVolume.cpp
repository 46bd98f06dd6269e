/** @file
  Simulated disk volume: the simple file system protocol and the file
  protocol over files held in memory, in one root directory.
**/
#include <algorithm>
#include <cstring>

#include <Guid/FileInfo.h>

#include "HostPlatform.h"
#include "HostVolumes.h"

namespace {

constexpr UINT64 mSectorSize = 512;

VOID
RecordNotSimulated (const char *Member)
{
  HostPlatform::Current ().RecordError (std::string ("unexpected call: EFI_FILE_PROTOCOL.") + Member +
                                        " is not simulated");
}

EFI_STATUS EFIAPI
DeleteNotSimulated (IN EFI_FILE_PROTOCOL *This)
{
  RecordNotSimulated ("Delete");
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
WriteNotSimulated (IN EFI_FILE_PROTOCOL *This, IN OUT UINTN *BufferSize, IN VOID *Buffer)
{
  RecordNotSimulated ("Write");
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
GetPositionNotSimulated (IN EFI_FILE_PROTOCOL *This, OUT UINT64 *Position)
{
  RecordNotSimulated ("GetPosition");
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
SetPositionNotSimulated (IN EFI_FILE_PROTOCOL *This, IN UINT64 Position)
{
  RecordNotSimulated ("SetPosition");
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
SetInfoNotSimulated (IN EFI_FILE_PROTOCOL *This, IN EFI_GUID *InformationType, IN UINTN BufferSize, IN VOID *Buffer)
{
  RecordNotSimulated ("SetInfo");
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
FlushNotSimulated (IN EFI_FILE_PROTOCOL *This)
{
  RecordNotSimulated ("Flush");
  return EFI_UNSUPPORTED;
}

std::u16string
WideName (const CHAR16 *Name)
{
  std::u16string Text;

  while (*Name != 0) {
    Text.push_back ((char16_t)*Name++);
  }

  return Text;
}

} // namespace

HostDiskVolume::HostDiskVolume ()
{
  mProtocol.Revision = EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_REVISION;
  mProtocol.OpenVolume = OpenVolumeService;
}

HostDiskVolume &
HostDiskVolume::AddFile (const std::u16string &Name, const std::vector<UINT8> &Data)
{
  mFiles[FoldName (Name)] = {Name, Data};
  return *this;
}

HostDiskVolume &
HostDiskVolume::AddFile (const std::u16string &Name, const std::string &Data)
{
  return AddFile (Name, std::vector<UINT8> (Data.begin (), Data.end ()));
}

UINTN
HostDiskVolume::OpenHandles () const
{
  return mOpenFiles.size ();
}

std::u16string
HostDiskVolume::FoldName (const std::u16string &Name)
{
  std::u16string Folded = (!Name.empty () && (Name[0] == u'\\')) ? Name.substr (1) : Name;

  for (char16_t &Character : Folded) {
    if ((Character >= u'A') && (Character <= u'Z')) {
      Character = (char16_t)(Character - u'A' + u'a');
    }
  }

  return Folded;
}

EFI_FILE_PROTOCOL *
HostDiskVolume::NewHandle (bool IsRoot, const std::u16string &Name)
{
  auto Record = std::make_unique<OpenFile> ();

  Record->Protocol.Revision = EFI_FILE_PROTOCOL_REVISION;
  Record->Protocol.Open = OpenService;
  Record->Protocol.Close = CloseService;
  Record->Protocol.Delete = DeleteNotSimulated;
  Record->Protocol.Read = ReadService;
  Record->Protocol.Write = WriteNotSimulated;
  Record->Protocol.GetPosition = GetPositionNotSimulated;
  Record->Protocol.SetPosition = SetPositionNotSimulated;
  Record->Protocol.GetInfo = GetInfoService;
  Record->Protocol.SetInfo = SetInfoNotSimulated;
  Record->Protocol.Flush = FlushNotSimulated;
  Record->Volume = this;
  Record->IsRoot = IsRoot;
  Record->Name = Name;
  Record->Position = 0;

  EFI_FILE_PROTOCOL *Handle = &Record->Protocol;
  mOpenFiles[Handle] = std::move (Record);
  return Handle;
}

EFI_STATUS EFIAPI
HostDiskVolume::OpenVolumeService (IN EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *This, OUT EFI_FILE_PROTOCOL **Root)
{
  HostVolumes::CheckTpl ("OpenVolume", TPL_CALLBACK);
  HostDiskVolume *Volume = HostPlatform::Current ().Volumes ().FindDisk (This);
  if (Volume == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (auto Failure = Volume->Enter (HostVolumeCall::OpenVolume)) {
    return *Failure;
  }

  if (Root == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  *Root = Volume->NewHandle (true, u"");
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostDiskVolume::OpenService (IN EFI_FILE_PROTOCOL *This,
                             OUT EFI_FILE_PROTOCOL **NewHandle,
                             IN CHAR16 *FileName,
                             IN UINT64 OpenMode,
                             IN UINT64 Attributes)
{
  HostVolumes::CheckTpl ("EFI_FILE_PROTOCOL.Open", TPL_CALLBACK);
  OpenFile *File = HostPlatform::Current ().Volumes ().FindFile (This);
  if (File == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  HostDiskVolume &Volume = *File->Volume;
  HostFileOpen &Record = Volume.mOpens.emplace_back (
    HostFileOpen{(FileName != nullptr) ? WideName (FileName) : u"", OpenMode, Attributes, EFI_SUCCESS});

  if (auto Failure = Volume.Enter (HostVolumeCall::Open)) {
    Record.Status = *Failure;
  } else if ((NewHandle == nullptr) || (FileName == nullptr)) {
    Record.Status = EFI_INVALID_PARAMETER;
  } else if (OpenMode != EFI_FILE_MODE_READ) {
    Record.Status = EFI_WRITE_PROTECTED;
  } else if (!File->IsRoot || (Volume.mFiles.count (FoldName (Record.Name)) == 0)) {
    Record.Status = EFI_NOT_FOUND;
  } else {
    *NewHandle = Volume.NewHandle (false, FoldName (Record.Name));
  }

  return Record.Status;
}

EFI_STATUS EFIAPI
HostDiskVolume::CloseService (IN EFI_FILE_PROTOCOL *This)
{
  HostVolumes::CheckTpl ("EFI_FILE_PROTOCOL.Close", TPL_CALLBACK);
  OpenFile *File = HostPlatform::Current ().Volumes ().FindFile (This);
  if (File == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // UEFI closes the handle in every case; an injected failure only changes
  // the status reported.
  //
  HostDiskVolume &Volume = *File->Volume;
  std::optional<EFI_STATUS> Failure = Volume.Enter (HostVolumeCall::Close);
  Volume.mOpenFiles.erase (This);
  return Failure.value_or (EFI_SUCCESS);
}

EFI_STATUS EFIAPI
HostDiskVolume::ReadService (IN EFI_FILE_PROTOCOL *This, IN OUT UINTN *BufferSize, OUT VOID *Buffer)
{
  HostVolumes::CheckTpl ("EFI_FILE_PROTOCOL.Read", TPL_CALLBACK);
  OpenFile *File = HostPlatform::Current ().Volumes ().FindFile (This);
  if (File == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (auto Failure = File->Volume->Enter (HostVolumeCall::Read)) {
    return *Failure;
  }

  return File->Volume->Read (*File, BufferSize, Buffer);
}

EFI_STATUS
HostDiskVolume::Read (OpenFile &File, UINTN *BufferSize, VOID *Buffer) const
{
  if (BufferSize == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (File.IsRoot) {
    return EFI_UNSUPPORTED; // directory entries are not simulated
  }

  auto Found = mFiles.find (File.Name);
  if (Found == mFiles.end ()) {
    return EFI_DEVICE_ERROR; // removed by the test while open
  }

  const std::vector<UINT8> &Data = Found->second.second;
  if (File.Position > Data.size ()) {
    return EFI_DEVICE_ERROR;
  }

  UINTN Count = std::min<UINTN> (*BufferSize, Data.size () - File.Position);
  if ((Count > 0) && (Buffer == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  if (Count > 0) {
    std::memcpy (Buffer, Data.data () + File.Position, Count);
  }

  File.Position += Count;
  *BufferSize = mReportedReadSize.value_or (Count);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostDiskVolume::GetInfoService (IN EFI_FILE_PROTOCOL *This,
                                IN EFI_GUID *InformationType,
                                IN OUT UINTN *BufferSize,
                                OUT VOID *Buffer)
{
  HostVolumes::CheckTpl ("EFI_FILE_PROTOCOL.GetInfo", TPL_CALLBACK);
  OpenFile *File = HostPlatform::Current ().Volumes ().FindFile (This);
  if (File == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (auto Failure = File->Volume->Enter (HostVolumeCall::GetInfo)) {
    return *Failure;
  }

  return File->Volume->GetInfo (*File, InformationType, BufferSize, Buffer);
}

EFI_STATUS
HostDiskVolume::GetInfo (OpenFile &File, const EFI_GUID *InformationType, UINTN *BufferSize, VOID *Buffer) const
{
  if ((InformationType == nullptr) || (BufferSize == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  if (!HostGuidEqual (*InformationType, gEfiFileInfoGuid)) {
    return EFI_UNSUPPORTED;
  }

  std::u16string Name;
  UINT64 FileSize = 0;
  if (!File.IsRoot) {
    auto Found = mFiles.find (File.Name);
    if (Found == mFiles.end ()) {
      return EFI_DEVICE_ERROR;
    }

    Name = Found->second.first;
    FileSize = Found->second.second.size ();
  }

  //
  // The true information: the fixed part, then the name with its null.
  //
  std::vector<UINT8> Info (SIZE_OF_EFI_FILE_INFO + (Name.size () + 1) * sizeof (CHAR16), 0);
  EFI_FILE_INFO Fixed = {};
  Fixed.Size = Info.size ();
  Fixed.FileSize = mReportedFileSize.value_or (FileSize);
  Fixed.PhysicalSize = (FileSize + mSectorSize - 1) / mSectorSize * mSectorSize;
  Fixed.Attribute = EFI_FILE_READ_ONLY | (File.IsRoot ? EFI_FILE_DIRECTORY : EFI_FILE_ARCHIVE);
  std::memcpy (Info.data (), &Fixed, SIZE_OF_EFI_FILE_INFO);
  std::memcpy (Info.data () + SIZE_OF_EFI_FILE_INFO, Name.data (), Name.size () * sizeof (CHAR16));

  UINTN Needed = mReportedInfoSize.value_or (Info.size ());
  if ((Buffer == nullptr) || (*BufferSize < Needed)) {
    *BufferSize = Needed;
    return EFI_BUFFER_TOO_SMALL;
  }

  //
  // A volume that reports another size fills that many bytes: the truth,
  // cut or followed by zeros.
  //
  UINTN Filled = std::min<UINTN> (Needed, Info.size ());
  std::memcpy (Buffer, Info.data (), Filled);
  std::memset ((UINT8 *)Buffer + Filled, 0, Needed - Filled);
  *BufferSize = Needed;
  return EFI_SUCCESS;
}
