/** @file
  Stand-ins of the platform services: what each answers, what it records, how
  it refuses bad calls, and their place in the shared call log.
**/
#include "StandInTest.h"

#include <array>
#include <cstring>

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/BootLogo.h>
#include <Protocol/BootMenu.h>
#include <Protocol/DiagnosticsLaunch.h>
#include <Protocol/PersonalityModule.h>
#include <Protocol/PiPcd.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/Settings.h>
#include <Protocol/SetupState.h>
#include <Protocol/Smbios.h>
#include <StandIns/ServiceStandIns.h>

namespace {

///
/// The cells a GetInfo request names, as the driver's password record holds them.
///
struct InfoCells {
  UINT8 Discarded[PASSWORD_INFO_DISCARDED_SIZE];
  UINT64 Kind, NarrowChars, Value3, MaxAttempts, Value5, MaxLength;
  UINT8 Block[PASSWORD_INFO_BLOCK_SIZE];
  UINT64 Value8;
};

///
/// One service stand-in: how it is installed and where the test keeps its interface.
///
struct ServiceEntry {
  EFI_STATUS (EFIAPI *Install) (EFI_HANDLE *Handle);
  EFI_STATUS (EFIAPI *Uninstall) (EFI_HANDLE Handle);
  EFI_GUID *Guid;
  VOID **Interface;
};

class ServiceStandInTest : public StandInTest {
protected:
  void
  SetUp () override
  {
    StandInTest::SetUp ();
    StandInResetServices ();
    for (const ServiceEntry &Service : Services ()) {
      ASSERT_EQ (Service.Install (&mServices), EFI_SUCCESS);
      ASSERT_EQ (gBS->LocateProtocol (Service.Guid, nullptr, Service.Interface), EFI_SUCCESS);
    }
  }

  void
  TearDown () override
  {
    for (const ServiceEntry &Service : Services ()) {
      EXPECT_EQ (Service.Uninstall (mServices), EFI_SUCCESS);
    }

    StandInResetServices ();
    StandInTest::TearDown ();
  }

  std::vector<ServiceEntry>
  Services ()
  {
    return {
      {InstallSettingsStandIn, UninstallSettingsStandIn, &gSettingsProtocolGuid, (VOID **)&mSettings},
      {InstallServiceRequestStandIn, UninstallServiceRequestStandIn, &gServiceRequestProtocolGuid, (VOID **)&mService},
      {InstallBootMenuStandIn, UninstallBootMenuStandIn, &gBootMenuProtocolGuid, (VOID **)&mBootMenu},
      {InstallSetupStateStandIn, UninstallSetupStateStandIn, &gSetupStateProtocolGuid, (VOID **)&mSetup},
      {InstallDiagnosticsStandIn, UninstallDiagnosticsStandIn, &gDiagnosticsLaunchProtocolGuid, (VOID **)&mDiag},
      {InstallPcdStandIn, UninstallPcdStandIn, &gEfiPcdProtocolGuid, (VOID **)&mPcd},
      {InstallBootLogoStandIn, UninstallBootLogoStandIn, &gEfiBootLogoProtocolGuid, (VOID **)&mLogo},
      {InstallSmbiosStandIn, UninstallSmbiosStandIn, &gEfiSmbiosProtocolGuid, (VOID **)&mSmbios},
      {InstallPersonalityModuleStandIn, UninstallPersonalityModuleStandIn, &gPersonalityModuleProtocolGuid,
       (VOID **)&mPersonality},
    };
  }

  /** An administrator password checked as 8-bit text, and an other one as UCS-2. **/
  void
  SetTwoPasswords ()
  {
    const STAND_IN_PASSWORD Records[] = {
      {1, 1, 3, 32, 1, mAdminText.data (), EFI_SUCCESS, EFI_SUCCESS, EFI_SUCCESS},
      {0, 0, 5, 20, 2, mOtherText.data (), EFI_SUCCESS, EFI_SUCCESS, EFI_SUCCESS},
    };

    StandInSetPasswords (Records, ARRAY_SIZE (Records));
  }

  /** @return a password request block with the driver's preset Status. **/
  static PASSWORD_REQUEST
  Request (UINT64 Index, UINT32 Code, const VOID *Data)
  {
    EFI_STATUS Preset = (Code >= PasswordRequestCheck) ? EFI_SECURITY_VIOLATION : EFI_NOT_FOUND;
    return PASSWORD_REQUEST{Index, Code, 0, Preset, (UINT64)(UINTN)Data};
  }

  /** Makes the 104-byte GetInfo block as the driver does: nine addresses behind the header. **/
  static void
  MakeInfo (PASSWORD_INFO_REQUEST &Info, UINT64 Index, InfoCells &Cells)
  {
    Info = {Request (Index, PasswordRequestGetInfo, (const UINT8 *)&Info + sizeof (PASSWORD_REQUEST)),
            (UINT64)(UINTN)Cells.Discarded,
            (UINT64)(UINTN)&Cells.Kind,
            (UINT64)(UINTN)&Cells.NarrowChars,
            (UINT64)(UINTN)&Cells.Value3,
            (UINT64)(UINTN)&Cells.MaxAttempts,
            (UINT64)(UINTN)&Cells.Value5,
            (UINT64)(UINTN)&Cells.MaxLength,
            (UINT64)(UINTN)Cells.Block,
            (UINT64)(UINTN)&Cells.Value8};
  }

  EFI_STATUS
  Submit (VOID *Block, EFI_GUID *Family = &gPasswordRequestGuid)
  {
    return mService->SubmitRequest (Family, Block);
  }

  static STAND_IN_SERVICE_REQUEST
  LastRequest ()
  {
    STAND_IN_SERVICE_REQUEST Recorded{};

    EXPECT_TRUE (StandInGetServiceRequest (StandInServiceRequestCount () - 1, &Recorded));
    return Recorded;
  }

  EFI_STATUS
  Get (UINTN Item, UINTN &Size, VOID *Buffer, EFI_GUID *Namespace = &gSettingsNamespaceGuid)
  {
    return mSettings->GetSetting (mSettings, Item, Namespace, &Size, Buffer);
  }

  EFI_STATUS
  Next (EFI_SMBIOS_HANDLE &Handle, EFI_SMBIOS_TYPE *Type = nullptr)
  {
    return mSmbios->GetNext (mSmbios, &Handle, Type, &mRecord, nullptr);
  }

  /** @return string Number of the structure last found, or "" when it has none of that number. **/
  std::string
  SmbiosString (UINTN Number) const
  {
    const char *Text = (const char *)mRecord + mRecord->Length;

    for (UINTN Index = 1; *Text != 0; Index++, Text += std::strlen (Text) + 1) {
      if (Index == Number) {
        return Text;
      }
    }

    return "";
  }

  EFI_HANDLE mServices = nullptr;
  SETTINGS_PROTOCOL *mSettings = nullptr;
  SERVICE_REQUEST_PROTOCOL *mService = nullptr;
  BOOT_MENU_PROTOCOL *mBootMenu = nullptr;
  SETUP_STATE_PROTOCOL *mSetup = nullptr;
  DIAGNOSTICS_LAUNCH_PROTOCOL *mDiag = nullptr;
  EFI_PCD_PROTOCOL *mPcd = nullptr;
  EFI_BOOT_LOGO_PROTOCOL *mLogo = nullptr;
  EFI_SMBIOS_PROTOCOL *mSmbios = nullptr;
  PERSONALITY_MODULE_PROTOCOL *mPersonality = nullptr;
  EFI_SMBIOS_TABLE_HEADER *mRecord = nullptr;
  std::vector<CHAR16> mAdminText = Wide ("Secret");
  std::vector<CHAR16> mOtherText = Wide ("tamo2");
};

//
// Settings.
//

TEST_F (ServiceStandInTest, SettingsCopyStoredItemsAndReportTheirSize)
{
  std::string Text (80, 'W');
  std::array<UINT8, 100> Buffer;
  UINTN Size = Buffer.size ();

  ASSERT_EQ (StandInSetSetting (SETTING_WELCOME_TEXT, Text.c_str (), SETTING_WELCOME_TEXT_SIZE), EFI_SUCCESS);
  Buffer.fill (0xEE);
  ASSERT_EQ (Get (SETTING_WELCOME_TEXT, Size, Buffer.data ()), EFI_SUCCESS);
  EXPECT_EQ (Size, (UINTN)SETTING_WELCOME_TEXT_SIZE);
  EXPECT_EQ (std::string ((const char *)Buffer.data ()), Text);
  EXPECT_EQ (Buffer[81], 0xEE) << "the rest of the buffer is left alone";

  // A later value replaces the earlier one; an empty item is found and copies nothing.
  ASSERT_EQ (StandInSetSetting (SETTING_WELCOME_TEXT, "Hi", 3), EFI_SUCCESS);
  ASSERT_EQ (StandInSetSetting (SETTING_SERIAL_NUMBER, nullptr, 0), EFI_SUCCESS);
  Size = SETTING_WELCOME_TEXT_SIZE;
  ASSERT_EQ (Get (SETTING_WELCOME_TEXT, Size, Buffer.data ()), EFI_SUCCESS);
  EXPECT_EQ (Size, 3U);
  EXPECT_STREQ ((const char *)Buffer.data (), "Hi");
  EXPECT_EQ (Get (SETTING_SERIAL_NUMBER, Size, nullptr), EFI_SUCCESS);
  EXPECT_EQ (Size, 0U);
}

//
// Password service.
//

TEST_F (ServiceStandInTest, PasswordCountInfoAndStateFollowTheWireFormat)
{
  UINT64 Count = 0xAAAA;
  UINT64 State = 0;
  InfoCells Cells;
  PASSWORD_INFO_REQUEST Info;

  SetTwoPasswords ();
  PASSWORD_REQUEST CountRequest = Request (0, PasswordRequestGetCount, &Count);
  ASSERT_EQ (Submit (&CountRequest), EFI_SUCCESS);
  EXPECT_EQ (Count, 2U);
  EXPECT_EQ (CountRequest.Status, EFI_SUCCESS);

  std::memset (&Cells, 0xCC, sizeof (Cells));
  MakeInfo (Info, 1, Cells);
  ASSERT_EQ (Submit (&Info), EFI_SUCCESS);
  EXPECT_EQ (Info.Header.Status, EFI_SUCCESS);
  EXPECT_EQ (std::count (Cells.Discarded, Cells.Discarded + sizeof (Cells.Discarded), 0), 16);
  EXPECT_EQ ((std::vector<UINT64>{Cells.Kind, Cells.NarrowChars, Cells.Value3, Cells.MaxAttempts, Cells.Value5,
                                  Cells.MaxLength, Cells.Value8}),
             (std::vector<UINT64>{0, 0, 3, 5, 5, 20, 8}));
  EXPECT_EQ (std::count (Cells.Block, Cells.Block + sizeof (Cells.Block), 0x5A), PASSWORD_INFO_BLOCK_SIZE);

  PASSWORD_REQUEST StateRequest = Request (1, PasswordRequestGetState, &State);
  ASSERT_EQ (Submit (&StateRequest), EFI_SUCCESS);
  EXPECT_EQ (State, 2U);

  STAND_IN_SERVICE_REQUEST First{};
  ASSERT_EQ (StandInServiceRequestCount (), 3U);
  ASSERT_TRUE (StandInGetServiceRequest (0, &First));
  EXPECT_TRUE (CompareGuid (&First.Family, &gPasswordRequestGuid));
  EXPECT_EQ (First.Request, (UINT32)PasswordRequestGetCount);
  EXPECT_EQ (First.PresetStatus, EFI_NOT_FOUND);
  EXPECT_EQ (First.ResultStatus, EFI_SUCCESS);
  EXPECT_EQ (LastRequest ().Index, 1U);
  EXPECT_EQ (LastRequest ().Request, (UINT32)PasswordRequestGetState);
}

TEST_F (ServiceStandInTest, ChecksCompareNarrowOrWideTextAsTheRecordSays)
{
  // Record 0 takes the driver's 48-byte narrowed copy, record 1 the typed UCS-2 text.
  struct {
    UINT64 Index;
    UINT32 Code;
    const char *Text;
    EFI_STATUS Expected;
  } Cases[] = {
    {0, PasswordRequestCheck, "Secret", EFI_SUCCESS},
    {0, PasswordRequestCheckAlternate, "Secret", EFI_SUCCESS},
    {0, PasswordRequestCheck, "secret", EFI_SECURITY_VIOLATION},
    {0, PasswordRequestCheck, "Secret1", EFI_SECURITY_VIOLATION},
    {0, PasswordRequestCheck, "Secre", EFI_SECURITY_VIOLATION},
    {1, PasswordRequestCheckAlternate, "tamo2", EFI_SUCCESS},
    {1, PasswordRequestCheck, "tamo", EFI_SECURITY_VIOLATION},
    {1, PasswordRequestCheck, "tamo22", EFI_SECURITY_VIOLATION},
    {2, PasswordRequestCheck, "tamo2", EFI_NOT_FOUND},
  };

  SetTwoPasswords ();
  for (auto &Case : Cases) {
    UINT8 Narrowed[48] = {};
    std::vector<CHAR16> Typed = Wide (Case.Text);
    std::memcpy (Narrowed, Case.Text, std::strlen (Case.Text));
    PASSWORD_REQUEST Check = Request (Case.Index, Case.Code, (Case.Index == 0) ? (VOID *)Narrowed : Typed.data ());

    ASSERT_EQ (Submit (&Check), EFI_SUCCESS);
    EXPECT_EQ (Check.Status, Case.Expected) << Case.Text;
    STAND_IN_SERVICE_REQUEST Seen = LastRequest ();
    EXPECT_EQ (Seen.Request, Case.Code);
    EXPECT_EQ (Seen.PresetStatus, EFI_SECURITY_VIOLATION);
    EXPECT_EQ (Seen.ResultStatus, Case.Expected);
    EXPECT_EQ (Seen.NarrowCheck, Case.Index == 0);
    EXPECT_EQ ((Case.Index == 0) ? std::memcmp (Seen.NarrowData, Narrowed, sizeof (Narrowed)) : 0, 0);
    EXPECT_EQ (Narrow (Seen.WideData), (Case.Index == 1) ? Case.Text : "");
  }

  // The status for a right password is the record's; a record without a password accepts none.
  const EFI_STATUS Warning = ENCODE_WARNING (5);
  const STAND_IN_PASSWORD Records[] = {
    {1, 0, 3, 32, 1, mOtherText.data (), EFI_SUCCESS, EFI_SUCCESS, Warning},
    {0, 0, 3, 32, 1, nullptr, EFI_SUCCESS, EFI_SUCCESS, EFI_SUCCESS},
  };
  const CHAR16 Empty[] = {0};
  std::vector<CHAR16> Long (100, 'x');
  Long.push_back (0);
  StandInSetPasswords (Records, 2);
  PASSWORD_REQUEST Right = Request (0, PasswordRequestCheck, mOtherText.data ());
  PASSWORD_REQUEST Nothing = Request (1, PasswordRequestCheck, Empty);
  PASSWORD_REQUEST TooLong = Request (0, PasswordRequestCheck, Long.data ());
  ASSERT_EQ (Submit (&Right), EFI_SUCCESS);
  ASSERT_EQ (Submit (&Nothing), EFI_SUCCESS);
  ASSERT_EQ (Submit (&TooLong), EFI_SUCCESS);
  EXPECT_EQ (Right.Status, Warning);
  EXPECT_EQ (Nothing.Status, EFI_SECURITY_VIOLATION);
  EXPECT_EQ (TooLong.Status, EFI_SECURITY_VIOLATION);
  EXPECT_EQ (Narrow (LastRequest ().WideData), std::string (63, 'x')) << "63 characters kept, terminated";
}

//
// SMBIOS.
//

TEST_F (ServiceStandInTest, SmbiosWalksStructuresInOrderAndByType)
{
  // BIOS information, then twice system information (serial number in string 2) and a board, then the end.
  std::vector<UINT8> Table = {0, 4, 0, 0, 'B', 'I', 'O', 'S', 0, 0};
  for (const std::string &Strings : {std::string ("Kest\0SN-0042\0\0", 14), std::string ("Other\0SN-7\0\0", 12)}) {
    std::vector<UINT8> System (sizeof (SMBIOS_TABLE_TYPE1), 0);
    System[0] = SMBIOS_TYPE_SYSTEM_INFORMATION;
    System[1] = sizeof (SMBIOS_TABLE_TYPE1);
    System[OFFSET_OF (SMBIOS_TABLE_TYPE1, SerialNumber)] = 2;
    Table.insert (Table.end (), System.begin (), System.end ());
    Table.insert (Table.end (), Strings.begin (), Strings.end ());
    Table.insert (Table.end (), {2, 4, 0, 0, 0, 0});
  }

  Table.insert (Table.end (), {127, 4, 0, 0, 0, 0});
  ASSERT_EQ (StandInSetSmbiosTable (Table.data (), Table.size ()), EFI_SUCCESS);

  EFI_SMBIOS_HANDLE Handle = SMBIOS_HANDLE_PI_RESERVED;
  EFI_HANDLE Producer = nullptr;
  std::vector<UINT8> Types;
  while (mSmbios->GetNext (mSmbios, &Handle, nullptr, &mRecord, &Producer) == EFI_SUCCESS) {
    EXPECT_EQ (Handle, Types.size () + 1);
    EXPECT_EQ ((EFI_SMBIOS_HANDLE)mRecord->Handle, Handle);
    EXPECT_EQ (Producer, mServices);
    Types.push_back (mRecord->Type);
  }

  EXPECT_EQ (Types, (std::vector<UINT8>{0, 1, 2, 1, 2, 127}));
  EXPECT_EQ (Handle, SMBIOS_HANDLE_PI_RESERVED);

  EFI_SMBIOS_TYPE Type = SMBIOS_TYPE_SYSTEM_INFORMATION;
  std::vector<std::string> Serials;
  while (Next (Handle, &Type) == EFI_SUCCESS) {
    EXPECT_EQ (mRecord->Type, Type);
    Serials.push_back (SmbiosString (((SMBIOS_TABLE_TYPE1 *)mRecord)->SerialNumber));
  }

  EXPECT_EQ (Serials, (std::vector<std::string>{"SN-0042", "SN-7"}));
  EXPECT_EQ (SmbiosString (1), "Other") << "the record of the last success stays";

  // The type is ignored when the producer is told to answer wrongly.
  StandInSmbiosIgnoreType (TRUE);
  ASSERT_EQ (Next (Handle, &Type), EFI_SUCCESS);
  EXPECT_EQ (mRecord->Type, 0);
}

TEST_F (ServiceStandInTest, SmbiosCutsMalformedTablesInsideTheCopy)
{
  EFI_SMBIOS_HANDLE Handle = SMBIOS_HANDLE_PI_RESERVED;

  // The last structure's strings lack their double zero: the stand-in's zeros end them.
  const UINT8 Open[] = {1, 4, 0, 0, 'A', 'B', 'C'};
  ASSERT_EQ (StandInSetSmbiosTable (Open, sizeof (Open)), EFI_SUCCESS);
  ASSERT_EQ (Next (Handle), EFI_SUCCESS);
  EXPECT_EQ (SmbiosString (1), "ABC");
  EXPECT_EQ (Next (Handle), EFI_NOT_FOUND);

  // A whole table of one structure without any zero.
  std::vector<UINT8> Full (STAND_IN_MAX_SMBIOS_BYTES, 'x');
  Full[0] = 1;
  Full[1] = 4;
  ASSERT_EQ (StandInSetSmbiosTable (Full.data (), Full.size ()), EFI_SUCCESS);
  ASSERT_EQ (Next (Handle), EFI_SUCCESS) << "from 0xFFFE, where the last walk ended";
  EXPECT_EQ (SmbiosString (1).size (), STAND_IN_MAX_SMBIOS_BYTES - 4);

  // A structure whose length is below its header, or whose formatted area leaves the copy, ends the table.
  for (UINT8 Length : {2, 40}) {
    const UINT8 Broken[] = {2, 4, 0, 0, 0, 0, 1, Length, 0, 0, 0, 0, 0, 0, 0, 0};
    ASSERT_EQ (StandInSetSmbiosTable (Broken, sizeof (Broken)), EFI_SUCCESS);
    Handle = SMBIOS_HANDLE_PI_RESERVED;
    ASSERT_EQ (Next (Handle), EFI_SUCCESS);
    EXPECT_EQ (Next (Handle), EFI_NOT_FOUND) << (UINTN)Length;
  }

  // Unknown handles, missing pointers, bad tables.
  Handle = 0;
  EXPECT_EQ (Next (Handle), EFI_NOT_FOUND);
  EXPECT_EQ (Handle, SMBIOS_HANDLE_PI_RESERVED);
  EXPECT_EQ (mSmbios->GetNext (mSmbios, nullptr, nullptr, &mRecord, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (mSmbios->GetNext (mSmbios, &Handle, nullptr, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (StandInSetSmbiosTable (Full.data (), Full.size () + 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ (StandInSetSmbiosTable (nullptr, 4), EFI_INVALID_PARAMETER);
  ASSERT_EQ (StandInSetSmbiosTable (nullptr, 0), EFI_SUCCESS);
  EXPECT_EQ (Next (Handle), EFI_NOT_FOUND);
}

//
// The call log.
//

TEST_F (ServiceStandInTest, ObserverSeesServiceCallsInOrderWithTheirArguments)
{
  UINTN Size = 1;
  UINT8 Byte = 0;
  UINT8 Flag = 1;
  EFI_SMBIOS_HANDLE Handle = SMBIOS_HANDLE_PI_RESERVED;
  std::vector<STAND_IN_OPERATION> Order;

  UINTN Page = NewPage ();
  Get (SETTING_PAGE_COUNTDOWN, Size, &Byte);
  Submit (&Byte, &gPreSetupRequestGuid);
  mBootMenu->SetBootMenuFlag (1, &Flag);
  mBootMenu->RunBootMenu ();
  mPcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE);
  Next (Handle);
  mEngine->DestroyPage (Page);
  for (const RecordedCall &Call : mCalls) {
    Order.push_back (Call.Operation);
  }

  EXPECT_EQ (Order, (std::vector<STAND_IN_OPERATION>{
                      StandInOpCreatePage, StandInOpGetSetting, StandInOpSubmitRequest, StandInOpSetBootMenuFlag,
                      StandInOpRunBootMenu, StandInOpPcdGetBool, StandInOpSmbiosGetNext, StandInOpDestroyPage}));
  EXPECT_EQ (mCalls[1].Arguments, (std::vector<UINTN>{(UINTN)mSettings, SETTING_PAGE_COUNTDOWN,
                                                      (UINTN)&gSettingsNamespaceGuid, (UINTN)&Size, (UINTN)&Byte}));
  EXPECT_EQ (mCalls[2].Arguments, (std::vector<UINTN>{(UINTN)&gPreSetupRequestGuid, (UINTN)&Byte}));
  EXPECT_EQ (mCalls[3].Arguments, (std::vector<UINTN>{1, (UINTN)&Flag}));
  EXPECT_TRUE (mCalls[4].Arguments.empty ());
  EXPECT_EQ (mCalls[5].Arguments, (std::vector<UINTN>{(UINTN)&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE}));
  EXPECT_EQ (mCalls[6].Arguments, (std::vector<UINTN>{(UINTN)mSmbios, (UINTN)&Handle, 0, (UINTN)&mRecord, 0}));

  const char *Names[] = {"GetSetting",         "SubmitRequest",    "RunBootMenu", "SetBootMenuFlag", "SetSetupFlag",
                         "PrepareDiagnostics", "StartDiagnostics", "GetBool",     "SetBootLogo",     "GetNext"};
  for (UINTN Index = 0; Index < ARRAY_SIZE (Names); Index++) {
    EXPECT_STREQ (StandInOperationName ((STAND_IN_OPERATION)(StandInOpGetSetting + Index)), Names[Index]);
  }
}

TEST_F (ServiceStandInTest, FailedServiceCallsReturnTheirStatusWithoutActing)
{
  UINTN Size = 1;
  UINT8 Byte = 0;
  UINT16 Target = DIAGNOSTICS_TARGET_ALL;
  UINT64 Count = 0;
  EFI_SMBIOS_HANDLE Handle = SMBIOS_HANDLE_PI_RESERVED;
  const UINT8 Table[] = {1, 4, 0, 0, 0, 0};
  const UINTN GetNextCalls = StandInCallCount (StandInOpSmbiosGetNext);

  SetTwoPasswords ();
  StandInSetBootUiModePcd (TRUE);
  ASSERT_EQ (StandInSetSetting (SETTING_PAGE_COUNTDOWN, "\x02", 1), EFI_SUCCESS);
  ASSERT_EQ (StandInSetSmbiosTable (Table, sizeof (Table)), EFI_SUCCESS);
  for (UINTN Operation = StandInOpGetSetting; Operation < StandInOpCount; Operation++) {
    StandInFailOperation ((STAND_IN_OPERATION)Operation, (Operation == StandInOpGetSetting) ? 2 : 1, EFI_DEVICE_ERROR);
  }

  EXPECT_EQ (Get (SETTING_PAGE_COUNTDOWN, Size, &Byte), EFI_SUCCESS) << "the second call is the one that fails";
  Byte = 0;
  EXPECT_EQ (Get (SETTING_PAGE_COUNTDOWN, Size, &Byte), EFI_DEVICE_ERROR);
  EXPECT_EQ (Byte, 0);

  PASSWORD_REQUEST CountRequest = Request (0, PasswordRequestGetCount, &Count);
  EXPECT_EQ (Submit (&CountRequest), EFI_DEVICE_ERROR);
  EXPECT_EQ (CountRequest.Status, EFI_NOT_FOUND) << "the block is left alone";
  EXPECT_EQ (Count, 0U);
  EXPECT_EQ (LastRequest ().Returned, EFI_DEVICE_ERROR) << "but the call is recorded";
  EXPECT_EQ (LastRequest ().ResultStatus, EFI_NOT_FOUND);

  EXPECT_EQ (mBootMenu->RunBootMenu (), EFI_DEVICE_ERROR);
  EXPECT_EQ (mBootMenu->SetBootMenuFlag (1, &Byte), EFI_DEVICE_ERROR);
  EXPECT_EQ (mSetup->SetSetupFlag (1, &Byte), EFI_DEVICE_ERROR);
  EXPECT_EQ (mDiag->PrepareDiagnostics (mDiag, 1, 3, 2, &Target), EFI_DEVICE_ERROR);
  EXPECT_EQ (mDiag->StartDiagnostics (mDiag, 1, 3, &Size, &Size), EFI_DEVICE_ERROR);
  EXPECT_FALSE (mPcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE));
  EXPECT_EQ (mLogo->SetBootLogo (mLogo, nullptr, 0, 0, 0, 0), EFI_DEVICE_ERROR);
  EXPECT_EQ (Next (Handle), EFI_DEVICE_ERROR);
  EXPECT_EQ (Handle, SMBIOS_HANDLE_PI_RESERVED);
  EXPECT_EQ (StandInCallCount (StandInOpSmbiosGetNext) - GetNextCalls, 1U) << "a failed call is counted";

  STAND_IN_SERVICE_STATE State{};
  STAND_IN_BOOT_LOGO Logo{};
  StandInGetServiceState (&State);
  StandInGetBootLogo (&Logo);
  EXPECT_EQ (State.BootMenuRuns + State.BootMenuFlagCalls + State.SetupFlagCalls + State.DiagnosticsPrepared, 0U);
  EXPECT_EQ (Logo.Calls, 0U);

  // Each failure was taken once: the next calls act.
  EXPECT_TRUE (mPcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE));
  EXPECT_EQ (Next (Handle), EFI_SUCCESS);
  EXPECT_EQ (mBootMenu->RunBootMenu (), EFI_SUCCESS);
}

} // namespace
