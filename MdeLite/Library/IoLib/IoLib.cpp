/** @file
  I/O port reads: the 'in' instruction in the firmware image, a hook that the
  tests install in the host build.
**/
#include <Library/IoLib.h>

#if defined(MDE_LITE_HOST)

#include <Library/IoLibHostHook.h>

STATIC IO_READ32_HOOK mIoRead32Hook = nullptr;
STATIC VOID *mIoRead32Context = nullptr;

VOID
SetIoRead32Hook (IN IO_READ32_HOOK Hook, IN VOID *Context)
{
  mIoRead32Hook = Hook;
  mIoRead32Context = Context;
}

UINT32
EFIAPI
IoRead32 (IN UINTN Port)
{
  if (mIoRead32Hook == nullptr) {
    return MAX_UINT32;
  }

  return mIoRead32Hook (Port, mIoRead32Context);
}

#else

UINT32
EFIAPI
IoRead32 (IN UINTN Port)
{
  UINT32 Data;

  __asm__ __volatile__("inl %w1, %0" : "=a"(Data) : "Nd"((UINT16)Port));
  return Data;
}

#endif
