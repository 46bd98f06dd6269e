/** @file
  The boot-flow application's configuration file, and its way through
  volatile variables to the settings and password stand-ins of the platform
  driver: what the UI driver then reads through SETTINGS_PROTOCOL.
**/
#include <cstring>
#include <string>

#include <FirmwareCommon/BootConfig.h>
#include <Guid/KestUiGuids.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/Settings.h>
#include <StandInDriver/DemoConfiguration.h>
#include <StandIns/ServiceStandIns.h>

#include "PlatformTest.h"

namespace {

BOOT_CONFIG
Parse (const std::string &Text)
{
  BOOT_CONFIG Config;

  ParseBootConfig (Text.data (), Text.size (), &Config);
  return Config;
}

class DemoConfigurationTest : public PlatformTest {
protected:
  /** Installs the settings stand-in and reads Item through its protocol, as the UI driver does. **/
  EFI_STATUS
  ReadItem (UINTN Item, std::string &Value, UINTN Size = STAND_IN_MAX_SETTING_SIZE)
  {
    SETTINGS_PROTOCOL *Settings = nullptr;
    char Buffer[STAND_IN_MAX_SETTING_SIZE] = {};

    if (mSettingsHandle == nullptr) {
      EXPECT_EQ (InstallSettingsStandIn (&mSettingsHandle), EFI_SUCCESS);
    }

    EXPECT_EQ (gBS->LocateProtocol (&gSettingsProtocolGuid, nullptr, (VOID **)&Settings), EFI_SUCCESS);
    EFI_STATUS Status = Settings->GetSetting (Settings, Item, &gSettingsNamespaceGuid, &Size, Buffer);
    Value.assign (Buffer, Size);
    return Status;
  }

  void
  TearDown () override
  {
    if (mSettingsHandle != nullptr) {
      EXPECT_EQ (UninstallSettingsStandIn (mSettingsHandle), EFI_SUCCESS);
    }

    PlatformTest::TearDown ();
  }

  EFI_HANDLE mSettingsHandle = nullptr;
};

} // namespace

TEST (BootConfigParse, DefaultsWithoutAFile)
{
  BOOT_CONFIG Config;

  ParseBootConfig (nullptr, 0, &Config);
  EXPECT_EQ (Config.Mode, BootModeWelcome);
  EXPECT_FALSE (Config.HasCountdown);
  EXPECT_FALSE (Config.HasAdminPrompt);
  EXPECT_EQ (Config.Welcome[0], '\0');
  EXPECT_EQ (Config.Password[0], '\0');
  EXPECT_EQ (Config.Steps, 25U);
  EXPECT_EQ (Config.StepMilliseconds, 200U);
  ASSERT_EQ (Config.OutcomeCount, 1U);
  EXPECT_EQ (Config.Outcomes[0], 5U);
}

TEST (BootConfigParse, ReadsEveryNameWithCrLfCommentsAndUnknownLines)
{
  BOOT_CONFIG Config = Parse ("# demo\r\nmode=flash\r\ncountdown=2\r\nadmin-prompt=1\r\ndiagnostics-at-boot=0\r\n"
                              "ui-mode-zero=1\nwelcome=Hello there\ncaption=SN-1\npassword=kestrel\nsteps=7\n"
                              "step-ms=50\noutcomes=0,3,6\ncolour=blue\nno equals sign\n=value\n");

  EXPECT_EQ (Config.Mode, BootModeFlash);
  EXPECT_TRUE (Config.HasCountdown);
  EXPECT_EQ (Config.Countdown, 2);
  EXPECT_TRUE (Config.HasAdminPrompt);
  EXPECT_EQ (Config.AdminPrompt, 1);
  EXPECT_TRUE (Config.HasDiagnosticsAtBoot);
  EXPECT_EQ (Config.DiagnosticsAtBoot, 0);
  EXPECT_EQ (Config.UiModeZero, 1);
  EXPECT_STREQ (Config.Welcome, "Hello there");
  EXPECT_STREQ (Config.Caption, "SN-1");
  EXPECT_STREQ (Config.Password, "kestrel");
  EXPECT_EQ (Config.Steps, 7U);
  EXPECT_EQ (Config.StepMilliseconds, 50U);
  ASSERT_EQ (Config.OutcomeCount, 3U);
  EXPECT_EQ (Config.Outcomes[0], 0U);
  EXPECT_EQ (Config.Outcomes[1], 3U);
  EXPECT_EQ (Config.Outcomes[2], 6U);
}

TEST (BootConfigParse, OversizedAndMalformedValuesStayInBounds)
{
  std::string LongText (200, 'w');
  BOOT_CONFIG Config = Parse ("welcome=" + LongText + "\ncaption=" + LongText + "\npassword=" + LongText +
                              "\ncountdown=999\nadmin-prompt=x\nsteps=123456789012345678901234567890\n"
                              "outcomes=1,,x,2,3,4,5,6,0,1,2,3\nmode=sideways");

  EXPECT_EQ (std::strlen (Config.Welcome), (size_t)BOOT_CONFIG_TEXT_LENGTH);
  EXPECT_EQ (std::strlen (Config.Caption), (size_t)BOOT_CONFIG_CAPTION_LENGTH);
  EXPECT_EQ (std::strlen (Config.Password), (size_t)BOOT_CONFIG_PASSWORD_LENGTH);
  EXPECT_EQ (Config.Countdown, 255) << "out of range saturates";
  EXPECT_EQ (Config.AdminPrompt, 255) << "not a number saturates";
  EXPECT_EQ (Config.Steps, 1000U) << "the step count is capped";
  EXPECT_EQ (Config.OutcomeCount, (UINTN)BOOT_CONFIG_MAX_OUTCOMES) << "empty and non-numeric entries dropped";
  EXPECT_EQ (Config.Outcomes[0], 1U);
  EXPECT_EQ (Config.Outcomes[1], 2U);
  EXPECT_EQ (Config.Mode, BootModeWelcome);
}

TEST_F (DemoConfigurationTest, PublishedConfigurationReachesTheSettingsService)
{
  BOOT_CONFIG Config = Parse ("countdown=1\nadmin-prompt=1\nwelcome=Hello KestUi\ncaption=SN-42\npassword=kestrel\n"
                              "ui-mode-zero=1\n");
  std::string Value;

  PublishBootConfig (&Config);
  EXPECT_TRUE (LoadDemoConfiguration ()) << "ui-mode-zero=1 makes the PCD answer TRUE";

  ASSERT_EQ (ReadItem (1183, Value, 1), EFI_SUCCESS);
  EXPECT_EQ (Value, std::string (1, '\x01'));
  ASSERT_EQ (ReadItem (1618, Value, 1), EFI_SUCCESS);
  EXPECT_EQ (Value, std::string (1, '\x01'));
  ASSERT_EQ (ReadItem (1563, Value, 81), EFI_SUCCESS);
  EXPECT_STREQ (Value.c_str (), "Hello KestUi");
  ASSERT_EQ (ReadItem (9752, Value, 20), EFI_SUCCESS);
  EXPECT_STREQ (Value.c_str (), "SN-42");
  EXPECT_EQ (ReadItem (36930, Value, 1), EFI_NOT_FOUND) << "an item the file leaves out stays absent";
}

TEST_F (DemoConfigurationTest, NothingConfiguredLeavesEveryItemAbsent)
{
  std::string Value;

  EXPECT_FALSE (LoadDemoConfiguration ());
  EXPECT_EQ (ReadItem (1183, Value, 1), EFI_NOT_FOUND);
  EXPECT_EQ (ReadItem (1563, Value, 81), EFI_NOT_FOUND);
}

TEST_F (DemoConfigurationTest, OversizedVariableIsSkipped)
{
  UINT8 Large[STAND_IN_MAX_SETTING_SIZE + 1] = {};
  std::string Value;

  Large[0] = 'X';
  ASSERT_EQ (gRT->SetVariable ((CHAR16 *)DemoVariable::WelcomeText.Text, &gKestDemoVariableGuid,
                               EFI_VARIABLE_BOOTSERVICE_ACCESS, sizeof (Large), Large),
             EFI_SUCCESS);
  LoadDemoConfiguration ();
  EXPECT_EQ (ReadItem (1563, Value, 81), EFI_NOT_FOUND);
}

TEST_F (DemoConfigurationTest, HandOverReachesThePlatformAndDefaultsToTheFirmware)
{
  BOOT_CONFIG Config = Parse ("countdown=1\n");

  EXPECT_EQ (Config.HandOver, BootHandOverUnset);
  PublishBootConfig (&Config);
  EXPECT_TRUE (DemoHandsOverToFirmware ()) << "no variable: a platform in the flash hands over to the firmware";

  Config = Parse ("handover=screens\n");
  EXPECT_EQ (Config.HandOver, BootHandOverScreens);
  PublishBootConfig (&Config);
  EXPECT_FALSE (DemoHandsOverToFirmware ());

  Config = Parse ("handover=firmware\n");
  EXPECT_EQ (Config.HandOver, BootHandOverFirmware);
  PublishBootConfig (&Config);
  EXPECT_TRUE (DemoHandsOverToFirmware ());

  Config = Parse ("handover=sideways\n");
  EXPECT_EQ (Config.HandOver, BootHandOverScreens) << "anything but firmware keeps the screens";
}
