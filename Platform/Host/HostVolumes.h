/** @file
  Simulated volumes: disk volumes (EFI_SIMPLE_FILE_SYSTEM_PROTOCOL with
  EFI_FILE_PROTOCOL) and firmware volumes (EFI_FIRMWARE_VOLUME2_PROTOCOL),
  each on a handle of its own, installed in the order a test adds them, so
  that a handle search returns them in that order.

  A disk volume holds files by name in its root directory (no subdirectories;
  names compare without regard to A-Z case, as on FAT). OpenVolume gives a new
  root handle; Open of a missing file is EFI_NOT_FOUND, and any mode but read
  is EFI_WRITE_PROTECTED (the media is read-only). GetInfo answers
  EFI_FILE_INFO_ID with the UEFI size protocol: EFI_BUFFER_TOO_SMALL and the
  size needed when the buffer is too small. Every handle opened and not yet
  closed is counted, so that a test can see a leaked one.

  A firmware volume holds files by GUID: a raw file (no sections; ReadFile
  returns its bytes, ReadSection finds nothing) or a freeform file with one raw
  section (ReadSection (EFI_SECTION_RAW, 0) returns the section's data; ReadFile
  returns the whole file, the section header included). As the protocol
  defines it, a null *Buffer makes the volume allocate the data from
  pool (counted as an AllocatePool call, so it can be made to fail), a caller's
  buffer that is too small gets the data cut and EFI_WARN_BUFFER_TOO_SMALL, and
  a null Buffer of ReadFile asks for the size only.

  The file protocol's other members (Delete, Write, positions, SetInfo,
  Flush) are not simulated: a call is recorded as a platform error.

  Misbehaving volumes, for hostile-input tests: FailNth makes a call return a
  status at once, doing nothing else (EFI_SUCCESS gives "success" with no
  output); the Report... settings make a disk volume lie in its answers; Answer
  scripts what a firmware volume's next read hands back.
**/
#ifndef HOST_VOLUMES_H_
#define HOST_VOLUMES_H_

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <Protocol/FirmwareVolume2.h>
#include <Protocol/SimpleFileSystem.h>
#include <Uefi.h>

#include "HostGuid.h"

///
/// The calls of a volume, for counts and injected failures.
///
enum class HostVolumeCall : UINT8 { OpenVolume, Open, GetInfo, Read, Close, ReadFile, ReadSection, Count };

///
/// Failures injected into one volume's calls.
///
class HostVolumeFailures {
public:
  /** Makes the Nth call of Call from now (1: the next one) return Status at once. **/
  VOID FailNth (HostVolumeCall Call, EFI_STATUS Status, UINT64 Nth = 1);

  /** @return how many calls of Call the volume has received, failed ones included. **/
  UINT64 Count (HostVolumeCall Call) const;

  /** Counts a call; @return the status to fail it with, if one applies. **/
  std::optional<EFI_STATUS> Enter (HostVolumeCall Call);

private:
  struct Failure {
    HostVolumeCall Call;
    EFI_STATUS Status;
    UINT64 Skip; ///< matching calls still to let through
  };

  UINT64 mCounts[(size_t)HostVolumeCall::Count] = {};
  std::vector<Failure> mFailures;
};

///
/// One Open call of a disk volume.
///
struct HostFileOpen {
  std::u16string Name;
  UINT64 OpenMode;
  UINT64 Attributes;
  EFI_STATUS Status; ///< what the call returned
};

class HostDiskVolume : public HostVolumeFailures {
public:
  HostDiskVolume ();
  HostDiskVolume (const HostDiskVolume &) = delete;
  HostDiskVolume &operator= (const HostDiskVolume &) = delete;

  EFI_HANDLE
  Handle () const
  {
    return mHandle;
  }

  /** Adds (or replaces) a file of the root directory. **/
  HostDiskVolume &AddFile (const std::u16string &Name, const std::vector<UINT8> &Data);
  HostDiskVolume &AddFile (const std::u16string &Name, const std::string &Data);

  /** GetInfo claims to need, and to have filled, Size bytes (0 or below EFI_FILE_INFO included). **/
  VOID
  ReportInfoSize (UINTN Size)
  {
    mReportedInfoSize = Size;
  }

  /** GetInfo reports FileSize as Size, whatever the file holds. **/
  VOID
  ReportFileSize (UINT64 Size)
  {
    mReportedFileSize = Size;
  }

  /** Read reports Size bytes read (it copies no more than it was asked for and has). **/
  VOID
  ReportReadSize (UINTN Size)
  {
    mReportedReadSize = Size;
  }

  /** @return every Open call, in order. **/
  const std::vector<HostFileOpen> &
  Opens () const
  {
    return mOpens;
  }

  /** @return the root and file handles opened and not closed. **/
  UINTN OpenHandles () const;

private:
  friend class HostVolumes;

  struct OpenFile {
    EFI_FILE_PROTOCOL Protocol; ///< first: the handle is the record's address
    HostDiskVolume *Volume;
    bool IsRoot;
    std::u16string Name;
    UINT64 Position;
  };

  static EFI_STATUS EFIAPI OpenVolumeService (IN EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *This, OUT EFI_FILE_PROTOCOL **Root);
  static EFI_STATUS EFIAPI OpenService (IN EFI_FILE_PROTOCOL *This,
                                        OUT EFI_FILE_PROTOCOL **NewHandle,
                                        IN CHAR16 *FileName,
                                        IN UINT64 OpenMode,
                                        IN UINT64 Attributes);
  static EFI_STATUS EFIAPI CloseService (IN EFI_FILE_PROTOCOL *This);
  static EFI_STATUS EFIAPI ReadService (IN EFI_FILE_PROTOCOL *This, IN OUT UINTN *BufferSize, OUT VOID *Buffer);
  static EFI_STATUS EFIAPI GetInfoService (IN EFI_FILE_PROTOCOL *This,
                                           IN EFI_GUID *InformationType,
                                           IN OUT UINTN *BufferSize,
                                           OUT VOID *Buffer);

  static std::u16string FoldName (const std::u16string &Name);
  EFI_FILE_PROTOCOL *NewHandle (bool IsRoot, const std::u16string &Name);
  EFI_STATUS GetInfo (OpenFile &File, const EFI_GUID *InformationType, UINTN *BufferSize, VOID *Buffer) const;
  EFI_STATUS Read (OpenFile &File, UINTN *BufferSize, VOID *Buffer) const;

  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL mProtocol = {};
  EFI_HANDLE mHandle = nullptr;
  std::map<std::u16string, std::pair<std::u16string, std::vector<UINT8>>> mFiles; ///< by folded name
  std::map<const VOID *, std::unique_ptr<OpenFile>> mOpenFiles;
  std::vector<HostFileOpen> mOpens;
  std::optional<UINTN> mReportedInfoSize;
  std::optional<UINT64> mReportedFileSize;
  std::optional<UINTN> mReportedReadSize;
};

///
/// A scripted answer of a firmware volume's ReadFile or ReadSection.
///
struct HostFvAnswer {
  EFI_STATUS Status = EFI_SUCCESS;
  bool GiveBuffer = true;  ///< allocate a pool buffer of Size bytes into *Buffer (not done for an error)
  UINTN Size = 0;          ///< *BufferSize returned; also the size of the buffer given
  std::vector<UINT8> Data; ///< the buffer's first bytes (the rest is zero)
};

///
/// One ReadFile or ReadSection call of a firmware volume.
///
struct HostFvRead {
  HostVolumeCall Call;
  EFI_GUID NameGuid;
  EFI_SECTION_TYPE SectionType; ///< ReadSection only
  UINTN SectionInstance;        ///< ReadSection only
  bool BufferWasNull;           ///< *Buffer was null: the volume was to allocate
  EFI_STATUS Status;            ///< what the call returned
};

class HostFirmwareVolume : public HostVolumeFailures {
public:
  HostFirmwareVolume ();
  HostFirmwareVolume (const HostFirmwareVolume &) = delete;
  HostFirmwareVolume &operator= (const HostFirmwareVolume &) = delete;

  EFI_HANDLE
  Handle () const
  {
    return mHandle;
  }

  /** Adds a raw file (EFI_FV_FILETYPE_RAW): ReadFile returns Data; there are no sections. **/
  HostFirmwareVolume &AddRawFile (const EFI_GUID &Name, const std::vector<UINT8> &Data);

  /** Adds a freeform file whose one section is a raw section holding Data. **/
  HostFirmwareVolume &AddFileWithRawSection (const EFI_GUID &Name, const std::vector<UINT8> &Data);

  /** Queues a scripted answer for the next call of ReadFile or ReadSection (after injected failures). **/
  VOID Answer (HostVolumeCall Call, const HostFvAnswer &Answer);

  /** @return every ReadFile and ReadSection call, in order. **/
  const std::vector<HostFvRead> &
  Reads () const
  {
    return mReads;
  }

private:
  friend class HostVolumes;

  struct File {
    EFI_FV_FILETYPE Type;
    std::vector<UINT8> Contents;                  ///< what ReadFile returns
    std::optional<std::vector<UINT8>> RawSection; ///< what ReadSection (EFI_SECTION_RAW, 0) returns
  };

  static EFI_STATUS EFIAPI ReadFileService (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                            IN CONST EFI_GUID *NameGuid,
                                            IN OUT VOID **Buffer,
                                            IN OUT UINTN *BufferSize,
                                            OUT EFI_FV_FILETYPE *FoundType,
                                            OUT EFI_FV_FILE_ATTRIBUTES *FileAttributes,
                                            OUT UINT32 *AuthenticationStatus);
  static EFI_STATUS EFIAPI ReadSectionService (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                               IN CONST EFI_GUID *NameGuid,
                                               IN EFI_SECTION_TYPE SectionType,
                                               IN UINTN SectionInstance,
                                               IN OUT VOID **Buffer,
                                               IN OUT UINTN *BufferSize,
                                               OUT UINT32 *AuthenticationStatus);

  EFI_STATUS ReadFile (const EFI_GUID &NameGuid,
                       VOID **Buffer,
                       UINTN *BufferSize,
                       EFI_FV_FILETYPE *FoundType,
                       EFI_FV_FILE_ATTRIBUTES *FileAttributes,
                       UINT32 *AuthenticationStatus);
  EFI_STATUS ReadSection (const EFI_GUID &NameGuid,
                          EFI_SECTION_TYPE SectionType,
                          UINTN SectionInstance,
                          VOID **Buffer,
                          UINTN *BufferSize,
                          UINT32 *AuthenticationStatus);
  std::optional<EFI_STATUS> Scripted (HostVolumeCall Call, VOID **Buffer, UINTN *BufferSize);
  static EFI_STATUS Deliver (const std::vector<UINT8> &Data, VOID **Buffer, UINTN *BufferSize);

  EFI_FIRMWARE_VOLUME2_PROTOCOL mProtocol = {};
  EFI_HANDLE mHandle = nullptr;
  std::map<EFI_GUID, File, HostGuidLess> mFiles;
  std::deque<HostFvAnswer> mAnswers[(size_t)HostVolumeCall::Count];
  std::vector<HostFvRead> mReads;
};

class HostVolumes {
public:
  HostVolumes () = default;
  HostVolumes (const HostVolumes &) = delete;
  HostVolumes &operator= (const HostVolumes &) = delete;

  /**
    Makes a disk volume and installs its protocol on Handle (a new handle when
    null), after every volume added before it.
  **/
  HostDiskVolume &AddDiskVolume (EFI_HANDLE Handle = nullptr);

  /** Makes a firmware volume and installs its protocol on Handle (a new handle when null). **/
  HostFirmwareVolume &AddFirmwareVolume (EFI_HANDLE Handle = nullptr);

  /** @return the root and file handles of all disk volumes opened and not closed. **/
  UINTN OpenHandles () const;

  //
  // Used by the volumes' services.
  //

  /** @return the disk volume of This, or null (recorded as a platform error). **/
  HostDiskVolume *FindDisk (const EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *This);

  /** @return the open file record of This, or null (recorded as a platform error). **/
  HostDiskVolume::OpenFile *FindFile (const EFI_FILE_PROTOCOL *This);

  /** @return the firmware volume of This, or null (recorded as a platform error). **/
  HostFirmwareVolume *FindFirmwareVolume (const EFI_FIRMWARE_VOLUME2_PROTOCOL *This);

  /** Records a platform error when the caller's TPL is above Limit for Service. **/
  static VOID CheckTpl (const char *Service, EFI_TPL Limit);

private:
  std::deque<HostDiskVolume> mDisks;            ///< stable addresses
  std::deque<HostFirmwareVolume> mFirmwareVols; ///< stable addresses
};

#endif
