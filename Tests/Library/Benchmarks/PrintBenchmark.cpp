/** @file
  UnicodeSPrint: the short texts of the pages, and a long text cut to a
  small buffer (which must cost no more than the buffer holds).
**/
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

extern "C" {
#include <Library/PrintLib.h>
}

namespace {

constexpr GUID kGuid = {0xdba6a7e3, 0xbb57, 0x4be7, {0x8a, 0xf8, 0xd5, 0x78, 0xdb, 0x7e, 0x56, 0x87}};

std::vector<CHAR16>
Wide (const std::u16string &Text)
{
  std::vector<CHAR16> Result (Text.begin (), Text.end ());
  Result.push_back (0);
  return Result;
}

void
BM_UnicodeSPrintCaption (benchmark::State &State)
{
  std::vector<CHAR16> Format = Wide (u"%s-%a");
  std::vector<CHAR16> Serial = Wide (u"PF2ABCDE");
  CHAR16 Buffer[64];

  while (State.KeepRunning ()) {
    benchmark::DoNotOptimize (UnicodeSPrint (Buffer, sizeof (Buffer), Format.data (), Serial.data (), "K7Q1"));
  }
}
BENCHMARK (BM_UnicodeSPrintCaption);

void
BM_UnicodeSPrintNumbersGuidStatus (benchmark::State &State)
{
  std::vector<CHAR16> Format = Wide (u"%d %08lx %g %r");
  CHAR16 Buffer[128];

  while (State.KeepRunning ()) {
    benchmark::DoNotOptimize (UnicodeSPrint (Buffer, sizeof (Buffer), Format.data (), (INT32)-1234,
                                             (UINT64)0xFEDCBA98ULL, &kGuid, (UINTN)0x800000000000000EULL));
  }
}
BENCHMARK (BM_UnicodeSPrintNumbersGuidStatus);

void
BM_UnicodeSPrintMegabyteText (benchmark::State &State)
{
  std::string Text (size_t{1024} * 1024, 'q');
  std::vector<CHAR16> Format = Wide (u"%a");
  std::vector<CHAR16> Buffer (Text.size () + 1);

  while (State.KeepRunning ()) {
    benchmark::DoNotOptimize (
      UnicodeSPrint (Buffer.data (), Buffer.size () * sizeof (CHAR16), Format.data (), Text.c_str ()));
  }

  State.SetBytesProcessed ((int64_t)State.iterations () * (int64_t)Text.size ());
}
BENCHMARK (BM_UnicodeSPrintMegabyteText);

void
BM_UnicodeSPrintMegabyteTextIntoFiftyCharacters (benchmark::State &State)
{
  std::string Text (size_t{1024} * 1024, 'q');
  std::vector<CHAR16> Format = Wide (u"%a");
  CHAR16 Buffer[51];

  while (State.KeepRunning ()) {
    benchmark::DoNotOptimize (UnicodeSPrint (Buffer, sizeof (Buffer), Format.data (), Text.c_str ()));
  }
}
BENCHMARK (BM_UnicodeSPrintMegabyteTextIntoFiftyCharacters);

} // namespace
