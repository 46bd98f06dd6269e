/** @file
  Where the draw log goes: a sink that the embedder sets; inside firmware the
  serial port until then, in host builds nowhere (host tests set their own).
**/
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/SerialIo.h>

#include "RenderInternal.h"

#ifdef MDE_LITE_HOST
#define DEFAULT_DRAW_LOG_SINK nullptr
#else
#define DEFAULT_DRAW_LOG_SINK StandInSerialDrawLogSink
#endif

typedef struct {
  STAND_IN_DRAW_LOG_SINK Sink;
  VOID *Context;
} DRAW_LOG_SINK;

STATIC DRAW_LOG_SINK mDrawLogSink = {DEFAULT_DRAW_LOG_SINK, nullptr};

VOID EFIAPI
StandInSetDrawLogSink (IN STAND_IN_DRAW_LOG_SINK Sink OPTIONAL, IN VOID *Context OPTIONAL)
{
  mDrawLogSink.Sink = Sink;
  mDrawLogSink.Context = Context;
}

VOID EFIAPI
StandInSerialDrawLogSink (IN VOID *Context, IN CONST CHAR8 *Line, IN UINTN Length)
{
  EFI_SERIAL_IO_PROTOCOL *Serial = nullptr;
  UINTN Size = Length;

  (VOID) Context;
  if ((gBS == nullptr) || (Line == nullptr) ||
      EFI_ERROR (gBS->LocateProtocol (&gEfiSerialIoProtocolGuid, nullptr, (VOID **)&Serial)) || (Serial == nullptr) ||
      (Serial->Write == nullptr)) {
    return;
  }

  //
  // The log is a help for whoever watches the port: a failed write is not
  // the page's business.
  //
  Serial->Write (Serial, &Size, (VOID *)Line);
}

VOID
RenderWriteLog (IN CONST CHAR8 *Line, IN UINTN Length)
{
  if (mDrawLogSink.Sink != nullptr) {
    mDrawLogSink.Sink (mDrawLogSink.Context, Line, Length);
  }
}
