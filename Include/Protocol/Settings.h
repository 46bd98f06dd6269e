/** @file
  SETTINGS_PROTOCOL: the platform settings service. Only GetSetting is used.
**/
#ifndef KEST_SETTINGS_PROTOCOL_H_
#define KEST_SETTINGS_PROTOCOL_H_

#include <Uefi.h>

#define SETTINGS_PROTOCOL_GUID                                                                                         \
  {                                                                                                                    \
    0x71db7b7e, 0x4165, 0x48fa,                                                                                        \
    {                                                                                                                  \
      0xac, 0x9d, 0xf9, 0xaf, 0x4c, 0xef, 0xc5, 0x34                                                                   \
    }                                                                                                                  \
  }

///
/// Namespace of every item that this driver reads.
///
#define SETTINGS_NAMESPACE_GUID                                                                                        \
  {                                                                                                                    \
    0x417acee0, 0x6fa9, 0x4a82,                                                                                        \
    {                                                                                                                  \
      0x99, 0xd7, 0xf9, 0xb1, 0xdd, 0x27, 0x1e, 0x48                                                                   \
    }                                                                                                                  \
  }

///
/// Items and their sizes.
///
#define SETTING_PAGE_COUNTDOWN 1183       ///< 1 byte: 1 gives 5 s, 2 gives 10 s
#define SETTING_WELCOME_TEXT 1563         ///< 81 bytes: ASCII, null-terminated
#define SETTING_SETUP_ASKS_PASSWORD 1618  ///< 1 byte: non-zero asks for the admin password
#define SETTING_SERIAL_NUMBER 9752        ///< 20 bytes: ASCII
#define SETTING_DIAGNOSTICS_AT_BOOT 36930 ///< 1 byte: non-zero runs diagnostics at boot

#define SETTING_WELCOME_TEXT_SIZE 81
#define SETTING_SERIAL_NUMBER_SIZE 20

typedef struct _SETTINGS_PROTOCOL SETTINGS_PROTOCOL;

/**
  Reads a settings item.

  @param[in]     This       The protocol.
  @param[in]     ItemId     Item number.
  @param[in]     Namespace  Namespace of the item.
  @param[in,out] Size       Size of Buffer on entry.
  @param[out]    Buffer     Receives the item.

  @retval EFI_NOT_FOUND  The item does not exist.
**/
typedef EFI_STATUS (EFIAPI *SETTINGS_GET_SETTING) (
  IN SETTINGS_PROTOCOL *This, IN UINTN ItemId, IN EFI_GUID *Namespace, IN OUT UINTN *Size, OUT VOID *Buffer);

struct _SETTINGS_PROTOCOL {
  SETTINGS_GET_SETTING GetSetting; // 0
};

STATIC_ASSERT (OFFSET_OF (SETTINGS_PROTOCOL, GetSetting) == 0, "settings slot 0");

extern EFI_GUID gSettingsProtocolGuid;
extern EFI_GUID gSettingsNamespaceGuid;

#endif
