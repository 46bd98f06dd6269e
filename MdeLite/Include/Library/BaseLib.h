/** @file
  String lengths and comparisons, linked lists and processor helpers.
**/
#ifndef MDE_LITE_BASE_LIB_H_
#define MDE_LITE_BASE_LIB_H_

#include <Base.h>

/** @return the number of CHAR16 before the null of String. **/
UINTN EFIAPI StrLen (IN CONST CHAR16 *String);

/** @return the number of CHAR16 before the null, at most MaxSize. **/
UINTN EFIAPI StrnLenS (IN CONST CHAR16 *String, IN UINTN MaxSize);

/** @return 0 when equal, else the difference of the first differing characters. **/
INTN EFIAPI StrCmp (IN CONST CHAR16 *FirstString, IN CONST CHAR16 *SecondString);

/** @return the number of CHAR8 before the null of String. **/
UINTN EFIAPI AsciiStrLen (IN CONST CHAR8 *String);

/** @return the number of CHAR8 before the null, at most MaxSize. **/
UINTN EFIAPI AsciiStrnLenS (IN CONST CHAR8 *String, IN UINTN MaxSize);

/** @return 0 when equal, else the difference of the first differing characters. **/
INTN EFIAPI AsciiStrCmp (IN CONST CHAR8 *FirstString, IN CONST CHAR8 *SecondString);

LIST_ENTRY *EFIAPI InitializeListHead (IN OUT LIST_ENTRY *ListHead);
LIST_ENTRY *EFIAPI InsertHeadList (IN OUT LIST_ENTRY *ListHead, IN OUT LIST_ENTRY *Entry);
LIST_ENTRY *EFIAPI InsertTailList (IN OUT LIST_ENTRY *ListHead, IN OUT LIST_ENTRY *Entry);
LIST_ENTRY *EFIAPI RemoveEntryList (IN CONST LIST_ENTRY *Entry);
BOOLEAN EFIAPI IsListEmpty (IN CONST LIST_ENTRY *ListHead);

/** @return the time-stamp counter. **/
UINT64 EFIAPI AsmReadTsc (VOID);

/** Hint to the processor that the caller is spinning. **/
VOID EFIAPI CpuPause (VOID);

#endif
