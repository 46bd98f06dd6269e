/** @file
  Reads of the platform settings service, which both pages use.
**/
#ifndef PLATFORM_SETTINGS_H_
#define PLATFORM_SETTINGS_H_

#include <Protocol/Settings.h>

/**
  Locates the settings service; it is looked up at each use, since it may be
  installed at any time.

  @param[out] Settings  The service, or null.

  @return the status of the look-up; EFI_NOT_FOUND when it gave a null interface.
**/
EFI_STATUS
LocateSettings (OUT SETTINGS_PROTOCOL **Settings);

/**
  Reads one item of the driver's namespace into Buffer.

  @param[in]  Settings  The service.
  @param[in]  ItemId    The item.
  @param[in]  Size      Size of Buffer.
  @param[out] Buffer    Receives the item.

  @return what GetSetting returned; EFI_NOT_FOUND means the item does not exist.
**/
EFI_STATUS
ReadSetting (IN SETTINGS_PROTOCOL *Settings, IN UINTN ItemId, IN UINTN Size, OUT VOID *Buffer);

#endif
