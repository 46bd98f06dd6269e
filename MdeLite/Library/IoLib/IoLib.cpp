/** @file
  I/O port access: the 'in' and 'out' instructions in the firmware image. On
  the host, 32-bit reads go to a hook that the tests install; the 8- and
  16-bit ports have no device behind them there: reads float high and writes
  go nowhere, as on a bus with nothing at the port.
**/
extern "C" {
#include <Library/IoLib.h>
}

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

UINT8
EFIAPI
IoRead8 (IN UINTN Port)
{
  return MAX_UINT8;
}

UINT16
EFIAPI
IoWrite16 (IN UINTN Port, IN UINT16 Value)
{
  return Value;
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

UINT8
EFIAPI
IoRead8 (IN UINTN Port)
{
  UINT8 Data;

  __asm__ __volatile__("inb %w1, %0" : "=a"(Data) : "Nd"((UINT16)Port));
  return Data;
}

UINT16
EFIAPI
IoWrite16 (IN UINTN Port, IN UINT16 Value)
{
  __asm__ __volatile__("outw %0, %w1" : : "a"(Value), "Nd"((UINT16)Port));
  return Value;
}

#endif
