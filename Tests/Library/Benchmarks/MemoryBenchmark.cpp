/** @file
  CopyMem, SetMem and CompareMem over 5 MB (the size of a large logo), beside
  the C library's functions for scale.
**/
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

extern "C" {
#include <Library/BaseMemoryLib.h>
}

namespace {

constexpr size_t kFiveMegabytes = size_t{5} * 1024 * 1024;
constexpr size_t kOverlapShift = 4096 + 3;

void
BM_CopyMem (benchmark::State &State)
{
  std::vector<UINT8> Source (kFiveMegabytes, 0x3C);
  std::vector<UINT8> Destination (kFiveMegabytes);

  while (State.KeepRunning ()) {
    CopyMem (Destination.data (), Source.data (), kFiveMegabytes);
    benchmark::DoNotOptimize (Destination.data ());
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_CopyMem);

void
BM_CopyMemOverlapDestinationBelow (benchmark::State &State)
{
  std::vector<UINT8> Buffer (kFiveMegabytes + kOverlapShift, 0x3C);

  while (State.KeepRunning ()) {
    CopyMem (Buffer.data (), Buffer.data () + kOverlapShift, kFiveMegabytes);
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_CopyMemOverlapDestinationBelow);

void
BM_CopyMemOverlapDestinationAbove (benchmark::State &State)
{
  std::vector<UINT8> Buffer (kFiveMegabytes + kOverlapShift, 0x3C);

  while (State.KeepRunning ()) {
    CopyMem (Buffer.data () + kOverlapShift, Buffer.data (), kFiveMegabytes);
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_CopyMemOverlapDestinationAbove);

void
BM_LibcMemmoveOverlapDestinationAbove (benchmark::State &State)
{
  std::vector<UINT8> Buffer (kFiveMegabytes + kOverlapShift, 0x3C);

  while (State.KeepRunning ()) {
    std::memmove (Buffer.data () + kOverlapShift, Buffer.data (), kFiveMegabytes);
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_LibcMemmoveOverlapDestinationAbove);

void
BM_LibcMemcpy (benchmark::State &State)
{
  std::vector<UINT8> Source (kFiveMegabytes, 0x3C);
  std::vector<UINT8> Destination (kFiveMegabytes);

  while (State.KeepRunning ()) {
    std::memcpy (Destination.data (), Source.data (), kFiveMegabytes);
    benchmark::DoNotOptimize (Destination.data ());
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_LibcMemcpy);

void
BM_SetMem (benchmark::State &State)
{
  std::vector<UINT8> Buffer (kFiveMegabytes);

  while (State.KeepRunning ()) {
    SetMem (Buffer.data (), kFiveMegabytes, 0xA5);
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_SetMem);

void
BM_ZeroMem (benchmark::State &State)
{
  std::vector<UINT8> Buffer (kFiveMegabytes, 0xFF);

  while (State.KeepRunning ()) {
    ZeroMem (Buffer.data (), kFiveMegabytes);
    benchmark::ClobberMemory ();
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_ZeroMem);

void
BM_CompareMemEqual (benchmark::State &State)
{
  std::vector<UINT8> First (kFiveMegabytes, 0x3C);
  std::vector<UINT8> Second (kFiveMegabytes, 0x3C);

  while (State.KeepRunning ()) {
    benchmark::DoNotOptimize (CompareMem (First.data (), Second.data (), kFiveMegabytes));
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)kFiveMegabytes);
}
BENCHMARK (BM_CompareMemEqual);

} // namespace
