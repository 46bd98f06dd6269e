/** @file
  The simulated console output: one 80x25 text mode that records the
  attributes set and the text written.
**/
#include <string>

#include "HostConsole.h"
#include "HostPlatform.h"

namespace {

constexpr UINTN mColumns = 80;
constexpr UINTN mRows = 25;
constexpr INT32 mDefaultAttribute = EFI_TEXT_ATTR (EFI_LIGHTGRAY, EFI_BLACK);

//
// Checks the call's entry and its This; returns the status to fail with, if any.
//
std::optional<EFI_STATUS>
EnterOutput (HostService Service, const EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, const VOID *Expected)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (Service)) {
    return Failure;
  }

  if (This != Expected) {
    Platform.RecordError (std::string (HostServiceName (Service)) + ": This is not the console output protocol");
    return EFI_INVALID_PARAMETER;
  }

  return std::nullopt;
}

} // namespace

EFI_STATUS EFIAPI
HostConsole::OutResetService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN BOOLEAN ExtendedVerification)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::ConOutReset, This, &Console.mOut)) {
    return *Failure;
  }

  Console.mOutMode.Attribute = mDefaultAttribute;
  Console.mOutMode.CursorColumn = 0;
  Console.mOutMode.CursorRow = 0;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::OutputStringService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN CHAR16 *String)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::OutputString, This, &Console.mOut)) {
    return *Failure;
  }

  if (String == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  for (const CHAR16 *Character = String; *Character != 0; Character++) {
    Console.mOutput.push_back ((char16_t)*Character);
  }

  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::TestStringService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN CHAR16 *String)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::TestString, This, &Console.mOut)) {
    return *Failure;
  }

  return (String == nullptr) ? EFI_INVALID_PARAMETER : EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::QueryModeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This,
                               IN UINTN ModeNumber,
                               OUT UINTN *Columns,
                               OUT UINTN *Rows)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::QueryMode, This, &Console.mOut)) {
    return *Failure;
  }

  if ((Columns == nullptr) || (Rows == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  if (ModeNumber != 0) {
    return EFI_UNSUPPORTED;
  }

  *Columns = mColumns;
  *Rows = mRows;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::SetModeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN UINTN ModeNumber)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::SetMode, This, &Console.mOut)) {
    return *Failure;
  }

  if (ModeNumber != 0) {
    return EFI_UNSUPPORTED;
  }

  Console.mOutMode.CursorColumn = 0;
  Console.mOutMode.CursorRow = 0;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::SetAttributeService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN UINTN Attribute)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::SetAttribute, This, &Console.mOut)) {
    return *Failure;
  }

  //
  // Recorded as called; only bits 0..6 carry colours.
  //
  Console.mAttributes.push_back (Attribute);
  if ((Attribute & ~(UINTN)0x7F) != 0) {
    return EFI_UNSUPPORTED;
  }

  Console.mOutMode.Attribute = (INT32)Attribute;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::ClearScreenService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::ClearScreen, This, &Console.mOut)) {
    return *Failure;
  }

  Console.mOutMode.CursorColumn = 0;
  Console.mOutMode.CursorRow = 0;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::SetCursorPositionService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN UINTN Column, IN UINTN Row)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::SetCursorPosition, This, &Console.mOut)) {
    return *Failure;
  }

  if ((Column >= mColumns) || (Row >= mRows)) {
    return EFI_UNSUPPORTED;
  }

  Console.mOutMode.CursorColumn = (INT32)Column;
  Console.mOutMode.CursorRow = (INT32)Row;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConsole::EnableCursorService (IN EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *This, IN BOOLEAN Visible)
{
  HostConsole &Console = HostPlatform::Current ().Console ();

  if (auto Failure = EnterOutput (HostService::EnableCursor, This, &Console.mOut)) {
    return *Failure;
  }

  Console.mOutMode.CursorVisible = Visible;
  return EFI_SUCCESS;
}

VOID
HostConsole::InstallOutput (EFI_SYSTEM_TABLE &SystemTable)
{
  mOutMode.MaxMode = 1;
  mOutMode.Mode = 0;
  mOutMode.Attribute = mDefaultAttribute;
  mOutMode.CursorVisible = TRUE;

  mOut.Reset = OutResetService;
  mOut.OutputString = OutputStringService;
  mOut.TestString = TestStringService;
  mOut.QueryMode = QueryModeService;
  mOut.SetMode = SetModeService;
  mOut.SetAttribute = SetAttributeService;
  mOut.ClearScreen = ClearScreenService;
  mOut.SetCursorPosition = SetCursorPositionService;
  mOut.EnableCursor = EnableCursorService;
  mOut.Mode = &mOutMode;
  mOutHandle = mPlatform.Handles ().InstallProtocol (gEfiSimpleTextOutProtocolGuid, &mOut);

  SystemTable.ConsoleOutHandle = mOutHandle;
  SystemTable.ConOut = &mOut;
  SystemTable.StandardErrorHandle = mOutHandle;
  SystemTable.StdErr = &mOut;
}
