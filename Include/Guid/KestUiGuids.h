/** @file
  GUIDs of the variables, event groups, configuration tables and packages that
  the UI driver uses beside its protocols.
**/
#ifndef KEST_UI_GUIDS_H_
#define KEST_UI_GUIDS_H_

#include <Uefi.h>

///
/// Vendor GUID of the "KestDiagAbortFlag" variable.
///
#define KEST_DIAG_ABORT_FLAG_GUID                                                                                      \
  {                                                                                                                    \
    0x2b7a75e5, 0x2e62, 0x4738,                                                                                        \
    {                                                                                                                  \
      0x85, 0xc8, 0xd7, 0x4f, 0xd5, 0xfa, 0xbc, 0xa0                                                                   \
    }                                                                                                                  \
  }

///
/// Event group signalled on the way into Setup.
///
#define SETUP_ENTRY_EVENT_GROUP_GUID                                                                                   \
  {                                                                                                                    \
    0x14bf221a, 0x238a, 0x430b,                                                                                        \
    {                                                                                                                  \
      0x82, 0xe6, 0x67, 0x91, 0xfc, 0xd3, 0xb3, 0x9b                                                                   \
    }                                                                                                                  \
  }

///
/// Event group signalled before Setup when no password prompt stands in front of it.
///
#define PRE_SETUP_EVENT_GROUP_GUID                                                                                     \
  {                                                                                                                    \
    0x344dddaf, 0xc73c, 0x4650,                                                                                        \
    {                                                                                                                  \
      0x9a, 0xae, 0x8d, 0x08, 0x78, 0x03, 0x69, 0x83                                                                   \
    }                                                                                                                  \
  }

///
/// Configuration table holding the TSC frequency (UINT64, Hz).
///
#define TSC_FREQUENCY_GUID                                                                                             \
  {                                                                                                                    \
    0xdba6a7e3, 0xbb57, 0x4be7,                                                                                        \
    {                                                                                                                  \
      0x8a, 0xf8, 0xd5, 0x78, 0xdb, 0x7e, 0x56, 0x87                                                                   \
    }                                                                                                                  \
  }

///
/// Token space of the platform configuration token that picks the UI mode of a hand-over.
///
#define UI_PCD_TOKEN_SPACE_GUID                                                                                        \
  {                                                                                                                    \
    0x1bf1ca65, 0xb5b5, 0x4655,                                                                                        \
    {                                                                                                                  \
      0x99, 0x64, 0x30, 0xf4, 0x7e, 0xe0, 0x8e, 0x42                                                                   \
    }                                                                                                                  \
  }
#define UI_PCD_TOKEN_BOOT_UI_MODE 0xF0000001

///
/// GUID of the HII package list; it is also the flash update page protocol's GUID.
///
#define UI_PACKAGE_LIST_GUID FLASH_UPDATE_PAGE_PROTOCOL_GUID

///
/// GUID carried by the logo image package.
///
#define UI_IMAGE_PACKAGE_GUID                                                                                          \
  {                                                                                                                    \
    0x5b733946, 0xdc42, 0xf795,                                                                                        \
    {                                                                                                                  \
      0xc9, 0x6f, 0x31, 0x8d, 0x5c, 0xb1, 0xbd, 0xab                                                                   \
    }                                                                                                                  \
  }

///
/// Component GUID of the driver: the image package is handed over under it.
///
#define UI_DRIVER_COMPONENT_GUID                                                                                       \
  {                                                                                                                    \
    0x4a5ca267, 0x4016, 0x460f,                                                                                        \
    {                                                                                                                  \
      0x80, 0xee, 0x7b, 0x4c, 0x3d, 0x77, 0xfd, 0x62                                                                   \
    }                                                                                                                  \
  }

///
/// Firmware-volume file of the fallback logo.
///
#define KEST_LOGO_FILE_GUID                                                                                            \
  {                                                                                                                    \
    0xeb3001d5, 0xf827, 0x4938,                                                                                        \
    {                                                                                                                  \
      0x95, 0xe2, 0x5c, 0x8f, 0x64, 0x4b, 0x96, 0x6f                                                                   \
    }                                                                                                                  \
  }

extern EFI_GUID gKestDiagAbortFlagGuid;
extern EFI_GUID gSetupEntryEventGroupGuid;
extern EFI_GUID gPreSetupEventGroupGuid;
extern EFI_GUID gTscFrequencyGuid;
extern EFI_GUID gUiPcdTokenSpaceGuid;
extern EFI_GUID gUiImagePackageGuid;
extern EFI_GUID gUiDriverComponentGuid;
extern EFI_GUID gKestLogoFileGuid;

#endif
