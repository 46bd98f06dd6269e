/** @file
  Host builds only: the simulated I/O ports behind IoRead32.

  A host process has no access to I/O ports, so IoRead32 asks a hook that the
  test installs. Without a hook every read returns all ones, as a read of an
  unclaimed port does on a PC.
**/
#ifndef MDE_LITE_IO_LIB_HOST_HOOK_H_
#define MDE_LITE_IO_LIB_HOST_HOOK_H_

#if !defined(MDE_LITE_HOST)
#error "IoLibHostHook.h belongs to the host build."
#endif

#include <Base.h>

/** Answers a 32-bit read of Port. Context is the value given with the hook. **/
typedef UINT32 (*IO_READ32_HOOK) (IN UINTN Port, IN VOID *Context);

/** Installs Hook (or removes it, with nullptr) for every later IoRead32. **/
VOID SetIoRead32Hook (IN IO_READ32_HOOK Hook, IN VOID *Context);

#endif
