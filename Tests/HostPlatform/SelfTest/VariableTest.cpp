/** @file
  Tests of GetVariable and SetVariable and the write history.
**/
#include <Library/CompileTimeLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include "SelfTestHelpers.h"

namespace {

constexpr auto mName = CompileTime::MakeWideString (u"KestTestValue");
constexpr UINT32 mBootAccess = EFI_VARIABLE_BOOTSERVICE_ACCESS;
constexpr UINT32 mNvBootRuntime =
  EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;

CHAR16 *
Name ()
{
  return const_cast<CHAR16 *> (mName.Text);
}

} // namespace

TEST_F (HostPlatformTest, GetVariableReportsSizeAndAttributes)
{
  UINT32 Value = 0x12345678;
  UINT32 Attributes = 0;
  UINT8 Small[2] = {};
  UINT32 Read = 0;
  UINTN Size = sizeof (Small);

  EXPECT_EQ (gRT->GetVariable (Name (), &gTestProtocolA, &Attributes, &Size, Small), EFI_NOT_FOUND);
  ASSERT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mNvBootRuntime, sizeof (Value), &Value), EFI_SUCCESS);

  EXPECT_EQ (gRT->GetVariable (Name (), &gTestProtocolA, &Attributes, &Size, Small), EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ (Size, sizeof (Value));
  EXPECT_EQ (Attributes, mNvBootRuntime);
  EXPECT_EQ (Small[0], 0);

  Attributes = 0;
  ASSERT_EQ (gRT->GetVariable (Name (), &gTestProtocolA, &Attributes, &Size, &Read), EFI_SUCCESS);
  EXPECT_EQ (Read, Value);
  EXPECT_EQ (Attributes, mNvBootRuntime);
  EXPECT_EQ (gRT->GetVariable (Name (), &gTestProtocolB, nullptr, &Size, &Read), EFI_NOT_FOUND);
  EXPECT_EQ (gRT->GetVariable (Name (), &gTestProtocolA, nullptr, nullptr, &Read), EFI_INVALID_PARAMETER);
}

TEST_F (HostPlatformTest, SetVariableDeletesWithNoDataAndChecksAttributes)
{
  UINT8 Value = 1;

  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, 0, nullptr), EFI_NOT_FOUND);
  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, EFI_VARIABLE_RUNTIME_ACCESS, 1, &Value),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, 1, nullptr), EFI_INVALID_PARAMETER);
  ASSERT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, 1, &Value), EFI_SUCCESS);
  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mNvBootRuntime, 1, &Value), EFI_INVALID_PARAMETER);
  ASSERT_NE (Platform ().Variables ().Find (u"KestTestValue", gTestProtocolA), nullptr);

  ASSERT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, 0, nullptr), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Variables ().Find (u"KestTestValue", gTestProtocolA), nullptr);
  EXPECT_EQ (Platform ().Variables ().Count (), 0U);
}

TEST_F (HostPlatformTest, EveryWriteIsInTheHistoryInjectedFailuresToo)
{
  UINT8 First = 1;
  UINT16 Second = 0x0202;

  Platform ().Variables ().SeedValue (u"KestTestValue", gTestProtocolA, mBootAccess, (UINT8)7);
  ASSERT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, sizeof (First), &First), EFI_SUCCESS);
  Platform ().Calls ().FailNth (HostService::SetVariable, EFI_WRITE_PROTECTED, 1, &gTestProtocolA);
  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolB, mBootAccess, sizeof (Second), &Second), EFI_SUCCESS);
  EXPECT_EQ (gRT->SetVariable (Name (), &gTestProtocolA, mBootAccess, sizeof (Second), &Second), EFI_WRITE_PROTECTED);

  const std::vector<HostVariableWrite> &Writes = Platform ().Variables ().Writes (u"KestTestValue", gTestProtocolA);
  ASSERT_EQ (Writes.size (), 2U);
  EXPECT_EQ (Writes[0].Data, std::vector<UINT8> ({1}));
  EXPECT_EQ (Writes[0].Status, EFI_SUCCESS);
  EXPECT_EQ (Writes[1].Data, std::vector<UINT8> ({2, 2}));
  EXPECT_EQ (Writes[1].Status, EFI_WRITE_PROTECTED);
  EXPECT_EQ (Platform ().Variables ().Find (u"KestTestValue", gTestProtocolA)->Data, std::vector<UINT8> ({1}));
}
