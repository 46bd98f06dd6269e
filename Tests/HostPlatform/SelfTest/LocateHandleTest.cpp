/** @file
  Tests of LocateHandle and LocateHandleBuffer: sizes, order and statuses.
**/
#include "SelfTestHelpers.h"

TEST_F (HostPlatformTest, LocateHandleByProtocolReportsTheSizeItNeeds)
{
  UINT32 Interfaces[2] = {};
  EFI_HANDLE Buffer[2] = {};
  UINTN Size = sizeof (EFI_HANDLE);

  EXPECT_EQ (gBS->LocateHandle (ByProtocol, &gTestProtocolA, nullptr, &Size, Buffer), EFI_NOT_FOUND);

  EFI_HANDLE First = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interfaces[0]);
  EFI_HANDLE Second = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interfaces[1]);

  Size = sizeof (EFI_HANDLE);
  EXPECT_EQ (gBS->LocateHandle (ByProtocol, &gTestProtocolA, nullptr, &Size, Buffer), EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ (Size, 2 * sizeof (EFI_HANDLE));

  ASSERT_EQ (gBS->LocateHandle (ByProtocol, &gTestProtocolA, nullptr, &Size, Buffer), EFI_SUCCESS);
  EXPECT_EQ (Size, 2 * sizeof (EFI_HANDLE));
  EXPECT_EQ (Buffer[0], First);
  EXPECT_EQ (Buffer[1], Second);

  EXPECT_EQ (gBS->LocateHandle (ByProtocol, nullptr, nullptr, &Size, Buffer), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->LocateHandle (ByProtocol, &gTestProtocolA, nullptr, nullptr, Buffer), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->LocateHandle (ByRegisterNotify, nullptr, nullptr, &Size, Buffer), EFI_INVALID_PARAMETER);
}

TEST_F (HostPlatformTest, LocateHandleBufferHandsOutAPoolBufferThatTheCallerFrees)
{
  UINT32 Interface = 0;
  UINTN Count = 99;
  EFI_HANDLE *Buffer = reinterpret_cast<EFI_HANDLE *> (&Count);

  EXPECT_EQ (gBS->LocateHandleBuffer (ByProtocol, &gTestProtocolA, nullptr, &Count, &Buffer), EFI_NOT_FOUND);
  EXPECT_EQ (Count, 0U);
  EXPECT_EQ (Buffer, nullptr);

  EFI_HANDLE Handle = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interface);
  ASSERT_EQ (gBS->LocateHandleBuffer (ByProtocol, &gTestProtocolA, nullptr, &Count, &Buffer), EFI_SUCCESS);
  ASSERT_EQ (Count, 1U);
  EXPECT_EQ (Buffer[0], Handle);
  const HostPoolBuffer *Pool = Platform ().Pool ().Find (Buffer);
  ASSERT_NE (Pool, nullptr);
  EXPECT_EQ (Pool->Size, sizeof (EFI_HANDLE));
  EXPECT_EQ (gBS->FreePool (Buffer), EFI_SUCCESS);

  Platform ().Pool ().FailAllocation ();
  EXPECT_EQ (gBS->LocateHandleBuffer (AllHandles, nullptr, nullptr, &Count, &Buffer), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Buffer, nullptr);
}
