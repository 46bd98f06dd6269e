/** @file
  Fixture of the TSC publication tests: the minimal firmware, ACPI tables
  that the test builds, and helpers to publish the usual chain
  RSDP -> XSDT/RSDT -> FADT.
**/
#ifndef KEST_TESTS_TSC_TEST_FIXTURE_H_
#define KEST_TESTS_TSC_TEST_FIXTURE_H_

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include <Guid/Acpi.h>
#include <Guid/KestUiGuids.h>
#include <Library/TscTimerLib.h>
#include <Library/UefiBootServicesTableLib.h>

#include "FakeAcpiTables.h"
#include "MinimalFirmware.h"
#include "SimulatedPmTimer.h"

class TscTimerLibTest : public ::testing::Test {
protected:
  static constexpr UINT16 kTimerPort = 0x608;
  static constexpr UINT16 kLegacyTimerPort = 0xB008;

  /// Keeps Block alive for the test. @return its address.
  UINT64
  Keep (std::unique_ptr<FakeAcpi::GuardedBlock> Block)
  {
    UINT64 Address = Block->Address ();
    mBlocks.push_back (std::move (Block));
    return Address;
  }

  /// The memory of the kept block at Address.
  UINT8 *
  At (UINT64 Address)
  {
    for (const auto &Block : mBlocks) {
      if (Block->Address () == Address) {
        return Block->Data ();
      }
    }

    ADD_FAILURE () << "no table at " << Address;
    return nullptr;
  }

  /// Publishes Rsdp under Guid as the platform's ACPI root pointer.
  void
  PublishRootPointer (const EFI_GUID &Guid, UINT64 Rsdp)
  {
    EFI_GUID Copy = Guid;
    ASSERT_EQ (gBS->InstallConfigurationTable (&Copy, At (Rsdp)), EFI_SUCCESS);
  }

  /// An ACPI 2.0 platform: RSDP (revision 2) -> XSDT -> Fadt. @return the FADT's address.
  UINT64
  PublishAcpi20Platform (const FakeAcpi::FADT_SETTINGS &Fadt)
  {
    UINT64 FadtAddress = Keep (FakeAcpi::MakeFadt (Fadt));
    UINT64 Xsdt = Keep (FakeAcpi::MakeRootTable (true, {FadtAddress}));
    PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, Xsdt, 0)));
    return FadtAddress;
  }

  /// FADT settings of a 24-bit timer at kTimerPort in both PM_TMR_BLK and X_PM_TMR_BLK.
  static FakeAcpi::FADT_SETTINGS
  TimerAtPort (UINT16 Port)
  {
    FakeAcpi::FADT_SETTINGS Settings;
    Settings.PmTmrBlk = Port;
    Settings.XPmTmrBlk = Port;
    return Settings;
  }

  static SimulatedPmTimer::SETTINGS
  TimerSettings (UINT16 Port, UINT32 Width = 24)
  {
    SimulatedPmTimer::SETTINGS Settings;
    Settings.Port = Port;
    Settings.Width = Width;
    return Settings;
  }

  /// The published frequency, or 0 when no table is published.
  UINT64
  PublishedFrequency ()
  {
    auto *Value = (const UINT64 *)Firmware.FindTable (gTscFrequencyGuid);
    return Value == nullptr ? 0 : *Value;
  }

  /**
    Publishes, and expects the table to hold Timer's frequency (within 1%) in
    an 8-byte pool buffer, the only one outstanding.

    An interruption of this process at the instant a count is taken throws
    that count off; it is rare, so a measurement that misses is repeated, at
    most twice. A calibration that is wrong by design misses every time.
  **/
  void
  ExpectMeasuredFrom (const SimulatedPmTimer &Timer)
  {
    const double Expected = (double)Timer.ExpectedFrequency (TSC_CALIBRATION_PM_TICKS);

    for (int Attempt = 0; Attempt < 3; Attempt++) {
      ASSERT_EQ (PublishTscFrequency (), EFI_SUCCESS);
      void *Table = Firmware.FindTable (gTscFrequencyGuid);
      ASSERT_NE (Table, nullptr);
      if (std::fabs ((double)*(const UINT64 *)Table - Expected) <= Expected / 100 || Attempt == 2) {
        break;
      }

      ASSERT_EQ (gBS->InstallConfigurationTable (&gTscFrequencyGuid, nullptr), EFI_SUCCESS);
      gBS->FreePool (Table);
    }

    ExpectPublished (Timer);
  }

  /// After a successful publication: the table as ExpectMeasuredFrom describes it.
  void
  ExpectPublished (const SimulatedPmTimer &Timer)
  {
    const void *Table = Firmware.FindTable (gTscFrequencyGuid);
    ASSERT_NE (Table, nullptr);
    EXPECT_EQ (Firmware.PoolSize (Table), sizeof (UINT64));
    EXPECT_EQ (Firmware.OutstandingPool (), 1U);

    const double Expected = (double)Timer.ExpectedFrequency (TSC_CALIBRATION_PM_TICKS);
    EXPECT_NEAR ((double)PublishedFrequency (), Expected, Expected / 100);
    EXPECT_EQ (PublishedFrequency () % 1000, 0U) << "ticks per calibration times 1,000";
    EXPECT_EQ (Timer.StrayReads (), 0U);
  }

  /// No table, no pool left behind, no pool freed twice.
  void
  ExpectNothingPublished ()
  {
    EXPECT_EQ (Firmware.FindTable (gTscFrequencyGuid), nullptr);
    EXPECT_EQ (Firmware.OutstandingPool (), 0U);
    EXPECT_EQ (Firmware.BadFrees (), 0U);
  }

  MinimalFirmware Firmware;

private:
  std::vector<std::unique_ptr<FakeAcpi::GuardedBlock>> mBlocks;
};

#endif
