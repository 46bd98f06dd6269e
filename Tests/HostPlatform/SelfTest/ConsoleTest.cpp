/** @file
  Tests of the simulated console: key queue, key notifications, output.
**/
#include <Library/CompileTimeLib.h>

#include "SelfTestHelpers.h"

namespace {

std::vector<EFI_KEY_DATA> mNotified;

EFI_STATUS EFIAPI
RecordKey (IN EFI_KEY_DATA *KeyData)
{
  mNotified.push_back (*KeyData);
  return EFI_SUCCESS;
}

EFI_KEY_DATA
KeyOf (UINT16 ScanCode, CHAR16 UnicodeChar, EFI_KEY_TOGGLE_STATE Toggle)
{
  EFI_KEY_DATA Key = {};

  Key.Key.ScanCode = ScanCode;
  Key.Key.UnicodeChar = UnicodeChar;
  Key.KeyState.KeyToggleState = Toggle;
  return Key;
}

class HostConsoleTest : public HostPlatformTest {
protected:
  void
  SetUp () override
  {
    HostPlatformTest::SetUp ();
    mNotified.clear ();
    ASSERT_EQ (gBS->LocateProtocol (&gEfiSimpleTextInputExProtocolGuid, nullptr, reinterpret_cast<VOID **> (&mInEx)),
               EFI_SUCCESS);
  }

  VOID *
  Register (EFI_KEY_DATA Key)
  {
    VOID *Handle = nullptr;
    EXPECT_EQ (mInEx->RegisterKeyNotify (mInEx, &Key, RecordKey, &Handle), EFI_SUCCESS);
    return Handle;
  }

  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *mInEx = nullptr;
};

} // namespace

TEST_F (HostConsoleTest, KeysAreReadInOrderThenNotReady)
{
  EFI_KEY_DATA Key = {};
  EFI_INPUT_KEY Plain = {};

  Platform ().Console ().PushKey (SCAN_F2, 0);
  Platform ().Console ().PushKey (SCAN_NULL, 'x');

  ASSERT_EQ (mInEx->ReadKeyStrokeEx (mInEx, &Key), EFI_SUCCESS);
  EXPECT_EQ (Key.Key.ScanCode, SCAN_F2);
  EXPECT_EQ (Key.KeyState.KeyToggleState, EFI_TOGGLE_STATE_VALID);
  ASSERT_EQ (gST->ConIn->ReadKeyStroke (gST->ConIn, &Plain), EFI_SUCCESS);
  EXPECT_EQ (Plain.UnicodeChar, 'x');
  EXPECT_EQ (mInEx->ReadKeyStrokeEx (mInEx, &Key), EFI_NOT_READY);
  EXPECT_EQ (gST->ConIn->ReadKeyStroke (gST->ConIn, &Plain), EFI_NOT_READY);
}

TEST_F (HostConsoleTest, PressKeyNotifiesEveryMatchingRegistrationAtCallbackTpl)
{
  Register (KeyOf (SCAN_F2, 0, 0));
  Register (KeyOf (SCAN_F9, 0, EFI_TOGGLE_STATE_VALID));
  Register (KeyOf (SCAN_NULL, 'q', 0));

  ASSERT_EQ (Platform ().Console ().KeyRegistrations ().size (), 3U);
  EXPECT_EQ (Platform ().Console ().KeyRegistrations ()[1].KeyData.Key.ScanCode, SCAN_F9);

  Platform ().Console ().PressKey (SCAN_F9, 0);
  Platform ().Console ().PressKey (SCAN_F12, 0);

  ASSERT_EQ (mNotified.size (), 1U);
  EXPECT_EQ (mNotified[0].Key.ScanCode, SCAN_F9);
  EXPECT_EQ (Platform ().Console ().PendingKeys (), 2U);

  //
  // Pressed while a callback runs, the key is notified when the TPL drops.
  //
  EFI_TPL OldTpl = gBS->RaiseTPL (TPL_CALLBACK);
  Platform ().Console ().PressKey (SCAN_F2, 0);
  EXPECT_EQ (mNotified.size (), 1U);
  gBS->RestoreTPL (OldTpl);
  EXPECT_EQ (mNotified.size (), 2U);
}

TEST_F (HostConsoleTest, AnOvmfToggleStateMatchesNoRegistrationThatAsksForAnother)
{
  Register (KeyOf (SCAN_F2, 0, EFI_TOGGLE_STATE_VALID));
  Platform ().Console ().SetToggleState (EFI_TOGGLE_STATE_VALID | EFI_KEY_STATE_EXPOSED);

  Platform ().Console ().PressKey (SCAN_F2, 0);
  EXPECT_TRUE (mNotified.empty ());

  Register (KeyOf (SCAN_F2, 0, 0));
  Platform ().Console ().PressKey (SCAN_F2, 0);
  ASSERT_EQ (mNotified.size (), 1U);
  EXPECT_EQ (mNotified[0].KeyState.KeyToggleState, EFI_TOGGLE_STATE_VALID | EFI_KEY_STATE_EXPOSED);
}

TEST_F (HostConsoleTest, ConOutRecordsAttributesAndText)
{
  static constexpr auto mText = CompileTime::MakeWideString (u"Hello\r\n");

  ASSERT_EQ (gST->ConOut->SetAttribute (gST->ConOut, EFI_TEXT_ATTR (EFI_WHITE, EFI_BLACK)), EFI_SUCCESS);
  ASSERT_EQ (gST->ConOut->OutputString (gST->ConOut, const_cast<CHAR16 *> (mText.Text)), EFI_SUCCESS);
  ASSERT_EQ (gST->ConOut->SetAttribute (gST->ConOut, EFI_LIGHTGRAY), EFI_SUCCESS);

  EXPECT_EQ (Platform ().Console ().Attributes (), std::vector<UINTN> ({EFI_WHITE, EFI_LIGHTGRAY}));
  EXPECT_EQ (Platform ().Console ().Output (), u"Hello\r\n");
  EXPECT_EQ (gST->ConOut->Mode->Attribute, EFI_LIGHTGRAY);
}

class HostConsoleWithoutInputExTest : public HostPlatformTest {
protected:
  HostPlatformOptions
  Options () const override
  {
    HostPlatformOptions Options;
    Options.ConInEx = false;
    return Options;
  }
};

TEST_F (HostConsoleWithoutInputExTest, OnlyTheSimpleInputProtocolIsThere)
{
  VOID *Interface = nullptr;

  EXPECT_EQ (gBS->HandleProtocol (gST->ConsoleInHandle, &gEfiSimpleTextInputExProtocolGuid, &Interface),
             EFI_UNSUPPORTED);
  EXPECT_EQ (Platform ().Console ().InEx (), nullptr);
  EXPECT_EQ (gBS->HandleProtocol (gST->ConsoleInHandle, &gEfiSimpleTextInProtocolGuid, &Interface), EFI_SUCCESS);
}
