#include <StandIns/StandInFirmwareEvents.h>
#include <StandIns/StandInRender.h>
EFI_STATUS EFIAPI StandInUseFirmwareEvents (VOID) { return EFI_UNSUPPORTED; }
VOID EFIAPI StandInDrawScreen (IN CONST CHAR8 *Name, IN CONST CHAR16 *Title, IN CONST CHAR16 *CONST *Lines, IN UINTN LineCount, IN UINTN Selected) { (VOID)Name; (VOID)Title; (VOID)Lines; (VOID)LineCount; (VOID)Selected; }
