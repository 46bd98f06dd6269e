/** @file
  CopyMem, SetMem, ZeroMem and CompareMem: overlapping copies in both
  directions, megabyte buffers (a logo can be 5 MB), and the bytes around each
  area left alone.
**/
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

extern "C" {
#include <Library/BaseMemoryLib.h>
}

namespace {

constexpr size_t kFiveMegabytes = size_t{5} * 1024 * 1024;

//
// Bytes that differ from their neighbours and do not repeat with a short
// period, so that a copy from a wrong offset cannot match by chance.
//
std::vector<UINT8>
Pattern (size_t Length, UINT32 Seed)
{
  std::vector<UINT8> Bytes (Length);
  UINT32 State = Seed;

  for (UINT8 &Byte : Bytes) {
    State = State * 1664525U + 1013904223U;
    Byte = (UINT8)(State >> 24);
  }

  return Bytes;
}

TEST (BaseMemoryLib, CopyMemCopiesFiveMegabytes)
{
  std::vector<UINT8> Source = Pattern (kFiveMegabytes, 1);
  std::vector<UINT8> Destination (kFiveMegabytes + 2, 0xEE);

  EXPECT_EQ (CopyMem (Destination.data () + 1, Source.data (), kFiveMegabytes), Destination.data () + 1);
  EXPECT_EQ (std::memcmp (Destination.data () + 1, Source.data (), kFiveMegabytes), 0);
  EXPECT_EQ (Destination.front (), 0xEE);
  EXPECT_EQ (Destination.back (), 0xEE);
}

TEST (BaseMemoryLib, CopyMemOverlapWithDestinationAbove)
{
  // Forward copying would overwrite source bytes before reading them.
  const size_t Shift = 4099;
  std::vector<UINT8> Buffer = Pattern (kFiveMegabytes + Shift, 2);
  std::vector<UINT8> Expected = Buffer;
  std::copy_backward (Expected.begin (), Expected.end () - Shift, Expected.end ());

  CopyMem (Buffer.data () + Shift, Buffer.data (), kFiveMegabytes);
  EXPECT_TRUE (Buffer == Expected);
}

TEST (BaseMemoryLib, CopyMemOverlapWithDestinationBelow)
{
  const size_t Shift = 4099;
  std::vector<UINT8> Buffer = Pattern (kFiveMegabytes + Shift, 3);
  std::vector<UINT8> Expected = Buffer;
  std::copy (Expected.begin () + Shift, Expected.end (), Expected.begin ());

  CopyMem (Buffer.data (), Buffer.data () + Shift, kFiveMegabytes);
  EXPECT_TRUE (Buffer == Expected);
}

TEST (BaseMemoryLib, CopyMemSmallOverlapsAtEveryOffset)
{
  for (size_t Length = 0; Length <= 40; Length++) {
    for (size_t From = 0; From <= 9; From++) {
      for (size_t To = 0; To <= 9; To++) {
        std::vector<UINT8> Buffer = Pattern (64, (UINT32)(Length * 100 + From * 10 + To));
        std::vector<UINT8> Expected = Buffer;
        std::memmove (Expected.data () + To, Expected.data () + From, Length);

        CopyMem (Buffer.data () + To, Buffer.data () + From, Length);
        ASSERT_TRUE (Buffer == Expected) << "length " << Length << " from " << From << " to " << To;
      }
    }
  }
}

TEST (BaseMemoryLib, SetMemFillsFiveMegabytesAndNoMore)
{
  std::vector<UINT8> Buffer (kFiveMegabytes + 2, 0x11);

  EXPECT_EQ (SetMem (Buffer.data () + 1, kFiveMegabytes, 0x5A), Buffer.data () + 1);
  EXPECT_EQ (std::count (Buffer.begin () + 1, Buffer.end () - 1, 0x5A), (std::ptrdiff_t)kFiveMegabytes);
  EXPECT_EQ (Buffer.front (), 0x11);
  EXPECT_EQ (Buffer.back (), 0x11);
}

TEST (BaseMemoryLib, ZeroMemClearsOnlyItsArea)
{
  std::vector<UINT8> Buffer (kFiveMegabytes + 2, 0xFF);

  EXPECT_EQ (ZeroMem (Buffer.data () + 1, kFiveMegabytes), Buffer.data () + 1);
  EXPECT_EQ (std::count (Buffer.begin () + 1, Buffer.end () - 1, 0), (std::ptrdiff_t)kFiveMegabytes);
  EXPECT_EQ (Buffer.front (), 0xFF);
  EXPECT_EQ (Buffer.back (), 0xFF);
}

TEST (BaseMemoryLib, ZeroLengthTouchesNothing)
{
  UINT8 Byte = 0x77;

  CopyMem (&Byte, "x", 0);
  SetMem (&Byte, 0, 0);
  ZeroMem (&Byte, 0);
  EXPECT_EQ (Byte, 0x77);
  EXPECT_EQ (CompareMem ("a", "b", 0), 0);
}

TEST (BaseMemoryLib, CompareMemOrdersBytesAsUnsigned)
{
  const UINT8 Low[] = {1, 2, 0x01};
  const UINT8 High[] = {1, 2, 0xFF};

  EXPECT_EQ (CompareMem (Low, Low, sizeof (Low)), 0);
  EXPECT_LT (CompareMem (Low, High, sizeof (Low)), 0);
  EXPECT_GT (CompareMem (High, Low, sizeof (Low)), 0);
  EXPECT_EQ (CompareMem (Low, High, 2), 0);
}

TEST (BaseMemoryLib, CompareMemFindsTheLastByteOfFiveMegabytes)
{
  std::vector<UINT8> First = Pattern (kFiveMegabytes, 4);
  std::vector<UINT8> Second = First;

  EXPECT_EQ (CompareMem (First.data (), Second.data (), kFiveMegabytes), 0);
  Second.back () = (UINT8)(First.back () + 1);
  EXPECT_NE (CompareMem (First.data (), Second.data (), kFiveMegabytes), 0);
  EXPECT_EQ (CompareMem (First.data (), Second.data (), kFiveMegabytes - 1), 0);
}

TEST (BaseMemoryLib, CompareAndCopyGuid)
{
  const GUID First = {0xdba6a7e3, 0xbb57, 0x4be7, {0x8a, 0xf8, 0xd5, 0x78, 0xdb, 0x7e, 0x56, 0x87}};
  GUID Second = {};

  EXPECT_FALSE (CompareGuid (&First, &Second));
  EXPECT_EQ (CopyGuid (&Second, &First), &Second);
  EXPECT_TRUE (CompareGuid (&First, &Second));
  Second.Data4[7] ^= 1;
  EXPECT_FALSE (CompareGuid (&First, &Second));
}

} // namespace
