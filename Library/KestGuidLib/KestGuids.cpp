/** @file
  Definitions of the GUIDs that this project names, each checked at compile
  time against its text form.
**/
#include <Guid/KestUiGuids.h>
#include <Library/CompileTimeLib.h>
#include <Library/ModuleInfoLib.h>
#include <Protocol/BootMenu.h>
#include <Protocol/DiagnosticsLaunch.h>
#include <Protocol/FlashUpdatePage.h>
#include <Protocol/ModuleRegistry.h>
#include <Protocol/PageEngine.h>
#include <Protocol/PersonalityModule.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/Settings.h>
#include <Protocol/SetupState.h>
#include <Protocol/UiDriver.h>
#include <Protocol/UiFramework.h>

using CompileTime::GuidEqual;
using CompileTime::GuidFromText;

#define KEST_GUID(Name, Initializer, Text)                                                                             \
  static_assert (GuidEqual (EFI_GUID Initializer, GuidFromText (Text)), #Name);                                        \
  EFI_GUID Name = Initializer

KEST_GUID (gUiDriverProtocolGuid, UI_DRIVER_PROTOCOL_GUID, "C2DF0B85-B56C-4FEC-AE5E-8DFE1893D08C");
KEST_GUID (gFlashUpdatePageProtocolGuid, FLASH_UPDATE_PAGE_PROTOCOL_GUID, "BCCB2FA7-0FC7-43E4-A4DC-90ACC8871E7E");
KEST_GUID (gPageEngineProtocolGuid, PAGE_ENGINE_PROTOCOL_GUID, "C2A42CD4-DE95-4066-AB62-325E69338CF8");
KEST_GUID (gUiFrameworkProtocolGuid, UI_FRAMEWORK_PROTOCOL_GUID, "13BEC3CC-BC05-45DB-8F23-104B28FC00BC");
KEST_GUID (gSettingsProtocolGuid, SETTINGS_PROTOCOL_GUID, "71DB7B7E-4165-48FA-AC9D-F9AF4CEFC534");
KEST_GUID (gSettingsNamespaceGuid, SETTINGS_NAMESPACE_GUID, "417ACEE0-6FA9-4A82-99D7-F9B1DD271E48");
KEST_GUID (gBootMenuProtocolGuid, BOOT_MENU_PROTOCOL_GUID, "3A09F4A1-66A8-4FA4-8B1C-0550B3CB61A4");
KEST_GUID (gSetupStateProtocolGuid, SETUP_STATE_PROTOCOL_GUID, "6A683524-687D-4D7B-93E1-95298EE313D1");
KEST_GUID (gDiagnosticsLaunchProtocolGuid, DIAGNOSTICS_LAUNCH_PROTOCOL_GUID, "04484E87-D0EA-4F15-A566-B296B0E38ECB");
KEST_GUID (gServiceRequestProtocolGuid, SERVICE_REQUEST_PROTOCOL_GUID, "E492B063-E846-4810-A968-01BC24339774");
KEST_GUID (gPasswordRequestGuid, PASSWORD_REQUEST_GUID, "C45A22C5-55C4-4ADA-AA0B-478F9908CC8A");
KEST_GUID (gPreSetupRequestGuid, PRE_SETUP_REQUEST_GUID, "344DDDAF-C73C-4650-9AAE-8D0878036983");
KEST_GUID (gPersonalityModuleProtocolGuid, PERSONALITY_MODULE_PROTOCOL_GUID, "00A480CE-D751-4B11-89FB-7DCEBBB22F4D");
KEST_GUID (gModuleRegistryProtocolGuid, MODULE_REGISTRY_PROTOCOL_GUID, "11D1EC21-E568-4EB0-8E1D-A0809772B606");
KEST_GUID (gKestDiagAbortFlagGuid, KEST_DIAG_ABORT_FLAG_GUID, "2B7A75E5-2E62-4738-85C8-D74FD5FABCA0");
KEST_GUID (gSetupEntryEventGroupGuid, SETUP_ENTRY_EVENT_GROUP_GUID, "14BF221A-238A-430B-82E6-6791FCD3B39B");
KEST_GUID (gPreSetupEventGroupGuid, PRE_SETUP_EVENT_GROUP_GUID, "344DDDAF-C73C-4650-9AAE-8D0878036983");
KEST_GUID (gTscFrequencyGuid, TSC_FREQUENCY_GUID, "DBA6A7E3-BB57-4BE7-8AF8-D578DB7E5687");
KEST_GUID (gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_SPACE_GUID, "1BF1CA65-B5B5-4655-9964-30F47EE08E42");
KEST_GUID (gUiImagePackageGuid, UI_IMAGE_PACKAGE_GUID, "5B733946-DC42-F795-C96F-318D5CB1BDAB");
KEST_GUID (gUiDriverComponentGuid, UI_DRIVER_COMPONENT_GUID, "4A5CA267-4016-460F-80EE-7B4C3D77FD62");
KEST_GUID (gKestLogoFileGuid, KEST_LOGO_FILE_GUID, "EB3001D5-F827-4938-95E2-5C8F644B966F");

static_assert (GuidEqual (EFI_GUID MODULE_INFO_RECORD_GUID, GuidFromText ("059EF06E-C652-4A45-9FBE-5975E369461C")),
               "record GUID");
static_assert (GuidEqual (EFI_GUID MODULE_INFO_COMMON_GUID, GuidFromText ("7AA80CF5-9185-5271-B430-D8BDFCAA9B90")),
               "common GUID");
