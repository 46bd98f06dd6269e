/** @file
  The boot flow of a firmware with KestUi in its flash: an application in the
  firmware volume that the boot manager runs as a SysPrep#### load option, once
  the consoles are connected and before it boots the Boot#### options.
**/
#ifndef WELCOME_SYS_PREP_H_
#define WELCOME_SYS_PREP_H_

#include <Uefi.h>

///
/// FILE_GUID of WelcomeSysPrepApp.inf: the file that the SysPrep option starts.
///
#define KEST_WELCOME_SYS_PREP_FILE_GUID                                                                                \
  {                                                                                                                    \
    0x5069e3fc, 0xe72f, 0x4677,                                                                                        \
    {                                                                                                                  \
      0x9f, 0x8c, 0x56, 0xcc, 0x0b, 0x24, 0xec, 0x99                                                                   \
    }                                                                                                                  \
  }

#endif
