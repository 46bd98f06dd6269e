/** @file
  The simulated volumes: their installation, the lookup of a protocol or file
  handle that a service receives, and failures injected per call.
**/
#include "HostVolumes.h"

#include "HostPlatform.h"

VOID
HostVolumeFailures::FailNth (HostVolumeCall Call, EFI_STATUS Status, UINT64 Nth)
{
  mFailures.push_back (Failure{Call, Status, (Nth == 0) ? 0 : Nth - 1});
}

UINT64
HostVolumeFailures::Count (HostVolumeCall Call) const
{
  return mCounts[(size_t)Call];
}

std::optional<EFI_STATUS>
HostVolumeFailures::Enter (HostVolumeCall Call)
{
  mCounts[(size_t)Call]++;
  for (auto Entry = mFailures.begin (); Entry != mFailures.end (); ++Entry) {
    if (Entry->Call != Call) {
      continue;
    }

    if (Entry->Skip > 0) {
      Entry->Skip--;
      continue;
    }

    EFI_STATUS Status = Entry->Status;
    mFailures.erase (Entry);
    return Status;
  }

  return std::nullopt;
}

HostDiskVolume &
HostVolumes::AddDiskVolume (EFI_HANDLE Handle)
{
  HostDiskVolume &Volume = mDisks.emplace_back ();

  Volume.mHandle =
    HostPlatform::Current ().Handles ().InstallProtocol (gEfiSimpleFileSystemProtocolGuid, &Volume.mProtocol, Handle);
  return Volume;
}

HostFirmwareVolume &
HostVolumes::AddFirmwareVolume (EFI_HANDLE Handle)
{
  HostFirmwareVolume &Volume = mFirmwareVols.emplace_back ();

  Volume.mHandle =
    HostPlatform::Current ().Handles ().InstallProtocol (gEfiFirmwareVolume2ProtocolGuid, &Volume.mProtocol, Handle);
  return Volume;
}

UINTN
HostVolumes::OpenHandles () const
{
  UINTN Count = 0;

  for (const HostDiskVolume &Volume : mDisks) {
    Count += Volume.OpenHandles ();
  }

  return Count;
}

HostDiskVolume *
HostVolumes::FindDisk (const EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *This)
{
  for (HostDiskVolume &Volume : mDisks) {
    if (&Volume.mProtocol == This) {
      return &Volume;
    }
  }

  HostPlatform::Current ().RecordError ("OpenVolume: not a simulated file system protocol");
  return nullptr;
}

HostDiskVolume::OpenFile *
HostVolumes::FindFile (const EFI_FILE_PROTOCOL *This)
{
  for (HostDiskVolume &Volume : mDisks) {
    auto Found = Volume.mOpenFiles.find (This);
    if (Found != Volume.mOpenFiles.end ()) {
      return Found->second.get ();
    }
  }

  HostPlatform::Current ().RecordError ("EFI_FILE_PROTOCOL: a file handle that is not open (closed already?)");
  return nullptr;
}

HostFirmwareVolume *
HostVolumes::FindFirmwareVolume (const EFI_FIRMWARE_VOLUME2_PROTOCOL *This)
{
  for (HostFirmwareVolume &Volume : mFirmwareVols) {
    if (&Volume.mProtocol == This) {
      return &Volume;
    }
  }

  HostPlatform::Current ().RecordError ("EFI_FIRMWARE_VOLUME2_PROTOCOL: not a simulated firmware volume");
  return nullptr;
}

VOID
HostVolumes::CheckTpl (const char *Service, EFI_TPL Limit)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (Platform.Events ().CurrentTpl () > Limit) {
    Platform.RecordError (std::string (Service) + " called at TPL " +
                          std::to_string (Platform.Events ().CurrentTpl ()) + ", above its limit " +
                          std::to_string (Limit));
  }
}
