/** @file
  Stand-ins for the platform services that the UI driver hands over to: the
  settings service, the password service behind the service-request protocol,
  the boot menu, the Setup state, the diagnostics launch, the PCD answer for
  the UI driver's token, the boot logo, SMBIOS type 1 and the personality
  module; and a flash client that drives the flash update page as a
  firmware-update driver does.

  Every operation of these stand-ins goes through the call log of
  StandInCalls.h (observer, counts, StandInFailOperation) under the
  StandInOp... values of the services, so a test sees the order of page,
  framework and service calls in one sequence.

  Configuration is kept in static storage (no pool): installing, configuring
  and uninstalling a service leaves no pool buffer. Each Install function
  takes *Handle (a new handle when it is null), like the page engine's; each
  Uninstall removes the protocol again. Configuration stays until it is
  changed or StandInResetServices is called.

  Every operation answers a call while its service is not installed with
  EFI_NOT_STARTED (GetBool: FALSE), and refuses a null pointer that it needs
  with EFI_INVALID_PARAMETER (counted by StandInRejectedCount); nothing is
  written then.
**/
#ifndef SERVICE_STAND_INS_H_
#define SERVICE_STAND_INS_H_

#include <IndustryStandard/SmBios.h>
#include <Protocol/FlashUpdatePage.h>
#include <Uefi.h>

/** Forgets every service's configuration and records (not the call log). **/
VOID StandInResetServices (VOID);

//
// Settings service (SETTINGS_PROTOCOL).
//
// GetSetting refuses a This other than the installed interface. It answers
// only the namespace gSettingsNamespaceGuid (another namespace:
// EFI_NOT_FOUND). An item that was not set: EFI_NOT_FOUND. An item whose
// stored size is larger than *Size: EFI_BUFFER_TOO_SMALL, *Size set to the
// stored size, nothing copied. A null Buffer is refused unless the item is
// empty. Otherwise the stored bytes are copied,
// *Size becomes the stored size, and the rest of the buffer is left alone.
// StandInFailOperation (StandInOpGetSetting, ...) fails a chosen call.
//
#define STAND_IN_MAX_SETTINGS 16
#define STAND_IN_MAX_SETTING_SIZE 128

EFI_STATUS
EFIAPI
InstallSettingsStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallSettingsStandIn (IN EFI_HANDLE Handle);

/**
  Stores an item (a copy); a later call replaces it.

  @retval EFI_INVALID_PARAMETER  Size above STAND_IN_MAX_SETTING_SIZE, or Data null with Size not 0.
  @retval EFI_OUT_OF_RESOURCES   STAND_IN_MAX_SETTINGS items are stored already.
**/
EFI_STATUS
StandInSetSetting (IN UINTN ItemId, IN CONST VOID *Data, IN UINTN Size);

/** Removes an item; GetSetting then answers EFI_NOT_FOUND for it. **/
VOID StandInRemoveSetting (IN UINTN ItemId);

//
// Password service behind SERVICE_REQUEST_PROTOCOL.
//
// Requests of family gPasswordRequestGuid (values are UINT64 cells):
// - 1 GetCount (Index must be 0): writes the number of records (or the count
//   set with StandInSetPasswordCount) to Data; Status EFI_SUCCESS.
// - 2 GetInfo: Data must be the address of the block's offset 32, where the
//   nine addresses are, none of them 0. For a record that exists whose
//   InfoStatus is not an error, fills the nine addresses (the 16-byte area
//   with zeros, Kind, NarrowChars, InfoValue3 = 3, MaxAttempts, InfoValue5 =
//   5, MaxLength, the 4,096-byte block with 0x5A, InfoValue8 = 8); Status is
//   the record's InfoStatus. For an index past the records, EFI_NOT_FOUND and
//   nothing filled.
// - 3 GetState: writes the record's State unless its StateStatus is an error;
//   Status StateStatus. EFI_NOT_FOUND past the records.
// - 5 Check, 6 CheckAlternate: compares the data with the record's Password
//   (8-bit when the record's NarrowChars is 1, reading the 48-byte buffer,
//   else UCS-2; whole strings); Status CheckStatusRight or
//   EFI_SECURITY_VIOLATION. EFI_NOT_FOUND past the records.
// A malformed password request (Data 0, the rules above broken, or a code
// other than these five) gets EFI_INVALID_PARAMETER (EFI_UNSUPPORTED for the
// code) as its Status and as SubmitRequest's result, and counts as rejected.
// Requests of any other family are recorded; their Status is not touched.
// SubmitRequest returns EFI_SUCCESS for a handled request, EFI_UNSUPPORTED for
// another family, or what StandInFailOperation (StandInOpSubmitRequest) sets
// (the request is then recorded but not handled and its Status not touched).
//
#define STAND_IN_MAX_PASSWORDS 8

typedef struct {
  UINT64 Kind;        ///< 1 administrator, 0 other
  UINT64 NarrowChars; ///< 1: checks compare 8-bit text
  UINT64 MaxAttempts;
  UINT64 MaxLength;
  UINT64 State;                ///< bit 0 installed
  CONST CHAR16 *Password;      ///< the one accepted password; kept by reference; null accepts none
  EFI_STATUS InfoStatus;       ///< Status written for GetInfo
  EFI_STATUS StateStatus;      ///< Status written for GetState
  EFI_STATUS CheckStatusRight; ///< Status for a right password (0: EFI_SUCCESS)
} STAND_IN_PASSWORD;

EFI_STATUS
EFIAPI
InstallServiceRequestStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallServiceRequestStandIn (IN EFI_HANDLE Handle);

/** Sets the service's records (copies of the first STAND_IN_MAX_PASSWORDS); Count 0 leaves none. **/
VOID StandInSetPasswords (IN CONST STAND_IN_PASSWORD *Records OPTIONAL, IN UINTN Count);

/**
  Overrides the answer to GetCount: the count written and the Status of the
  request. StandInSetPasswords clears the override.
**/
VOID StandInSetPasswordCount (IN UINT64 Count, IN EFI_STATUS Status);

///
/// One SubmitRequest call as the service saw it.
///
typedef struct {
  EFI_GUID Family;
  EFI_STATUS Returned; ///< what SubmitRequest returned
  //
  // Password family: the header as received, and the Status written back.
  //
  UINT64 Index;
  UINT32 Request;
  EFI_STATUS PresetStatus;
  EFI_STATUS ResultStatus;
  //
  // Checks: the data as received. Narrow checks copy 48 bytes into NarrowData;
  // wide checks copy up to 63 characters (terminated) into WideData.
  //
  BOOLEAN NarrowCheck;
  UINT8 NarrowData[48];
  CHAR16 WideData[64];
  //
  // Other families: the first byte of the block (the pre-Setup gate cell).
  //
  UINT8 FirstByte;
} STAND_IN_SERVICE_REQUEST;

/**
  @return how many SubmitRequest calls with a family and a block were
  recorded; only the first STAND_IN_MAX_SERVICE_REQUESTS are kept.
**/
UINTN
StandInServiceRequestCount (VOID);

/** @return TRUE and the Index-th recorded SubmitRequest call (0 the first). **/
BOOLEAN
StandInGetServiceRequest (IN UINTN Index, OUT STAND_IN_SERVICE_REQUEST *Request);

#define STAND_IN_MAX_SERVICE_REQUESTS 64

//
// Boot menu (BOOT_MENU_PROTOCOL), Setup state (SETUP_STATE_PROTOCOL) and
// diagnostics launch (DIAGNOSTICS_LAUNCH_PROTOCOL). Their statuses are
// EFI_SUCCESS unless StandInFailOperation says otherwise, except for these
// refusals: SetBootMenuFlag knows Index 1 and 2 only (else
// EFI_INVALID_PARAMETER); StartDiagnostics needs a successful
// PrepareDiagnostics since the last start (else EFI_NOT_READY), and writes 0
// to both out cells.
//
EFI_STATUS
EFIAPI
InstallBootMenuStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallBootMenuStandIn (IN EFI_HANDLE Handle);

EFI_STATUS
EFIAPI
InstallSetupStateStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallSetupStateStandIn (IN EFI_HANDLE Handle);

EFI_STATUS
EFIAPI
InstallDiagnosticsStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallDiagnosticsStandIn (IN EFI_HANDLE Handle);

///
/// What the boot menu, Setup state and diagnostics stand-ins received.
///
typedef struct {
  UINTN BootMenuRuns;
  UINTN BootMenuFlagCalls;
  UINT8 BootMenuFlags[3]; ///< by Index (1, 2): the byte that Flag pointed to at the last call
  UINTN SetupFlagCalls;
  UINTN SetupFlagIndex; ///< of the last call
  UINT8 SetupFlag;      ///< the byte that Flag pointed to at the last call
  UINTN DiagnosticsPrepared;
  UINTN PrepareValues[3];   ///< Value1 to Value3 of the last PrepareDiagnostics
  UINT16 PrepareTarget;     ///< *Target of the last PrepareDiagnostics
  BOOLEAN PrepareThisRight; ///< This was the installed interface
  UINTN DiagnosticsStarted;
  UINTN StartValues[2]; ///< Value1, Value2 of the last StartDiagnostics
  BOOLEAN StartThisRight;
} STAND_IN_SERVICE_STATE;

VOID StandInGetServiceState (OUT STAND_IN_SERVICE_STATE *State);

//
// EFI_PCD_PROTOCOL with GetBool for the UI driver's token space. GetBool of
// (gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE) answers the value set
// here (FALSE at start); any other token answers FALSE and is counted. The
// other members are null: nothing else may be asked.
//
EFI_STATUS
EFIAPI
InstallPcdStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallPcdStandIn (IN EFI_HANDLE Handle);

VOID StandInSetBootUiModePcd (IN BOOLEAN Value);

/** @return how many GetBool calls asked for a token other than the UI driver's. **/
UINTN
StandInUnknownPcdQueries (VOID);

//
// EFI_BOOT_LOGO_PROTOCOL: records the last SetBootLogo call. A null
// BltBuffer (no logo on the screen) is accepted; a logo with no width or
// height, or a This other than the installed interface, is refused
// (EFI_INVALID_PARAMETER).
//
EFI_STATUS
EFIAPI
InstallBootLogoStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallBootLogoStandIn (IN EFI_HANDLE Handle);

typedef struct {
  UINTN Calls; ///< accepted SetBootLogo calls
  VOID *BltBuffer;
  UINTN X;
  UINTN Y;
  UINTN Width;
  UINTN Height;
} STAND_IN_BOOT_LOGO;

VOID StandInGetBootLogo (OUT STAND_IN_BOOT_LOGO *Logo);

//
// EFI_SMBIOS_PROTOCOL with GetNext over a table of the test's records.
//
// The table is a copy of the bytes given (at most STAND_IN_MAX_SMBIOS_BYTES),
// cut into structures the way SMBIOS lays them out: the formatted area (its
// length at byte 1, at least 4), then strings up to a double zero. The
// stand-in appends two zero bytes after the copy, so a malformed last
// structure still ends. A structure whose header or formatted area does not
// fit in the copy ends the table there. Handles are 1, 2, ... in table order,
// and are written into the copy's Handle fields. GetNext from 0xFFFE returns
// the first structure of the type asked (any type when Type is null), from
// handle N the next such structure after it, with *SmbiosHandle set to its
// handle and *ProducerHandle (when asked) to the stand-in's handle; after the
// last one (or from a handle not in the table) EFI_NOT_FOUND with
// *SmbiosHandle 0xFFFE. With StandInSmbiosIgnoreType (TRUE) GetNext ignores
// the type asked, to model a producer that answers wrongly.
//
#define STAND_IN_MAX_SMBIOS_BYTES 1024

EFI_STATUS
EFIAPI
InstallSmbiosStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallSmbiosStandIn (IN EFI_HANDLE Handle);

/**
  Sets the structures GetNext walks.

  @retval EFI_INVALID_PARAMETER  Size above STAND_IN_MAX_SMBIOS_BYTES, or Table null with Size not 0.
**/
EFI_STATUS
StandInSetSmbiosTable (IN CONST VOID *Table OPTIONAL, IN UINTN Size);

VOID StandInSmbiosIgnoreType (IN BOOLEAN Ignore);

//
// PERSONALITY_MODULE_PROTOCOL: the platform's personality module, which may
// supply a logo of its own. The interface has no operations, only data: its
// three reserved words hold 1, 2 and 3 (no addresses), and its logo pointer
// is null until StandInSetPersonalityLogo gives it a PERSONALITY_LOGO_IMAGE.
// That image lives in static storage: its 12 reserved bytes are 0xA5 (a
// reader that takes the size from the wrong place sees a wrong size), then
// the UINT32 DataSize, then the data (up to STAND_IN_MAX_PERSONALITY_LOGO
// bytes, zeros after the bytes given). The image stays where it is, so a
// pointer read earlier sees a later change. StandInResetServices removes the
// logo.
//
#define STAND_IN_MAX_PERSONALITY_LOGO 0x10000

EFI_STATUS
EFIAPI
InstallPersonalityModuleStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallPersonalityModuleStandIn (IN EFI_HANDLE Handle);

/**
  Gives the module a logo: Size bytes of Data, and DataSize as the image's
  size field, which may differ from Size (0 for a module that claims an empty
  logo; above Size for one whose data ends early, zeros following). A DataSize
  above STAND_IN_MAX_PERSONALITY_LOGO claims more than the storage holds, as a
  broken module might: it serves to check that a reader refuses or fails to
  copy it (the host pool gives no more than 1 GiB), never to be read.

  @retval EFI_SUCCESS            The logo pointer now points to the image.
  @retval EFI_INVALID_PARAMETER  Size above STAND_IN_MAX_PERSONALITY_LOGO, or Data null with Size not 0;
                                 nothing changed.
**/
EFI_STATUS
StandInSetPersonalityLogo (IN CONST VOID *Data OPTIONAL, IN UINTN Size, IN UINT32 DataSize);

/** Sets the logo pointer to null: the platform has no logo of its own. **/
VOID StandInRemovePersonalityLogo (VOID);

//
// MODULE_REGISTRY_PROTOCOL: keeps the list head of the last Register and
// counts its records; Unregister of that head forgets it (another head:
// EFI_NOT_FOUND).
//
typedef struct {
  UINTN Registrations;
  UINTN Unregistrations;
  LIST_ENTRY *ListHead; ///< registered now, or null
  UINTN RecordCount;    ///< records on that list when it was registered
} STAND_IN_MODULE_REGISTRY;

EFI_STATUS
EFIAPI
InstallModuleRegistryStandIn (IN OUT EFI_HANDLE *Handle);

EFI_STATUS
EFIAPI
UninstallModuleRegistryStandIn (IN EFI_HANDLE Handle);

VOID StandInGetModuleRegistry (OUT STAND_IN_MODULE_REGISTRY *State);

//
// The flash client: what a firmware-update driver does with
// FLASH_UPDATE_PAGE_PROTOCOL, played from a script so that host tests and
// firmware test applications drive the page alike. StandInRunFlashClient
// calls Show, then each step in order (SetProgress with its Percent, or
// SetStatusText with its Text, which may be null), then ShowResult with the
// script's Result unless OmitResult is set. Before each call the observer of
// StandInCalls.h sees it (StandInOpFlashShow, ...). After each step (not after
// Show or ShowResult) AfterStep, when set, runs with the step's index: there a
// test can hand events to the page, or a firmware application wait.
//

typedef enum {
  StandInFlashProgress,  ///< SetProgress (Percent)
  StandInFlashStatusText ///< SetStatusText (Text)
} STAND_IN_FLASH_STEP_KIND;

typedef struct {
  UINT32 Kind;       ///< a STAND_IN_FLASH_STEP_KIND
  UINTN Percent;     ///< StandInFlashProgress
  CONST CHAR8 *Text; ///< StandInFlashStatusText; null for an empty line
} STAND_IN_FLASH_STEP;

typedef VOID (EFIAPI *STAND_IN_FLASH_STEP_HOOK) (IN VOID *Context, IN UINTN StepIndex);

typedef struct {
  CONST STAND_IN_FLASH_STEP *Steps; ///< may be null when StepCount is 0
  UINTN StepCount;
  UINT32 Result;      ///< the outcome handed to ShowResult (a FLASH_UPDATE_RESULT, or any other value)
  BOOLEAN OmitResult; ///< TRUE: the client ends without ShowResult
  STAND_IN_FLASH_STEP_HOOK AfterStep OPTIONAL;
  VOID *Context OPTIONAL; ///< for AfterStep
} STAND_IN_FLASH_SCRIPT;

/**
  Plays Script on Page. The script is checked whole before the first call, so
  a bad one calls nothing.

  @retval EFI_SUCCESS            Played.
  @retval EFI_INVALID_PARAMETER  Page or Script null, a member of Page that the script needs is null, Steps null
                                 with StepCount not 0, or a step of another kind.
**/
EFI_STATUS
StandInRunFlashClient (IN FLASH_UPDATE_PAGE_PROTOCOL *Page, IN CONST STAND_IN_FLASH_SCRIPT *Script);

#endif
