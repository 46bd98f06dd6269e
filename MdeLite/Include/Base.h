/** @file
  Root include file for all modules: processor-neutral base types and macros.

  Written from the UEFI 2.10 specification with the names that EDK II's MdePkg
  uses, so that the same sources also build against the real MdePkg.
**/
#ifndef MDE_LITE_BASE_H_
#define MDE_LITE_BASE_H_

#if !defined(__x86_64__) && !defined(_M_X64)
#error "Only x86-64 is supported."
#endif

//
// Calling convention of every interface that crosses a UEFI boundary. The cross
// build targets the Microsoft x64 ABI already; the host build selects it per
// function so that host code and driver code call each other as firmware does.
//
#if defined(__x86_64__) && !defined(_WIN32)
#define EFIAPI __attribute__ ((ms_abi))
#else
#define EFIAPI
#endif

typedef unsigned long long UINT64;
typedef long long INT64;
typedef unsigned int UINT32;
typedef int INT32;
typedef unsigned short UINT16;
typedef short INT16;
typedef unsigned char UINT8;
typedef signed char INT8;
typedef unsigned short CHAR16; // UCS-2, as in EDK II (not char16_t)
typedef char CHAR8;
typedef unsigned char BOOLEAN;
typedef UINT64 UINTN;
typedef INT64 INTN;

#define VOID void
#define CONST const
#define STATIC static
#define IN
#define OUT
#define OPTIONAL

#define TRUE ((BOOLEAN)(1 == 1))
#define FALSE ((BOOLEAN)(0 == 1))

#ifndef NULL
#define NULL nullptr
#endif

#define MAX_UINT8 ((UINT8)0xFF)
#define MAX_UINT16 ((UINT16)0xFFFF)
#define MAX_UINT32 ((UINT32)0xFFFFFFFF)
#define MAX_UINT64 ((UINT64)0xFFFFFFFFFFFFFFFFULL)
#define MAX_INTN ((INTN)0x7FFFFFFFFFFFFFFFLL)
#define MAX_UINTN ((UINTN)0xFFFFFFFFFFFFFFFFULL)
#define MAX_ADDRESS MAX_UINTN

#define BIT0 0x00000001U
#define BIT1 0x00000002U
#define BIT2 0x00000004U
#define BIT7 0x00000080U
#define BIT8 0x00000100U
#define BIT31 0x80000000U
#define BIT63 0x8000000000000000ULL

#define OFFSET_OF(TYPE, Field) ((UINTN) __builtin_offsetof(TYPE, Field))
#define ARRAY_SIZE(Array) (sizeof (Array) / sizeof ((Array)[0]))
#define SIGNATURE_16(A, B) ((A) | ((B) << 8))
#define SIGNATURE_32(A, B, C, D) (SIGNATURE_16 (A, B) | (SIGNATURE_16 (C, D) << 16))
#define SIGNATURE_64(A, B, C, D, E, F, G, H) (SIGNATURE_32 (A, B, C, D) | ((UINT64)(SIGNATURE_32 (E, F, G, H)) << 32))
#define MIN(a, b) (((a) < (b)) ? (a) : (b))
#define MAX(a, b) (((a) > (b)) ? (a) : (b))

#define BASE_CR(Record, TYPE, Field) ((TYPE *)((CHAR8 *)(Record)-OFFSET_OF (TYPE, Field)))

#define STATIC_ASSERT static_assert

//
// Variable argument lists of EFIAPI functions use the Microsoft layout on the host.
//
#if defined(__x86_64__) && !defined(_WIN32)
typedef __builtin_ms_va_list VA_LIST;
#define VA_START(Marker, Parameter) __builtin_ms_va_start (Marker, Parameter)
#define VA_ARG(Marker, TYPE)                                                                                           \
  ((sizeof (TYPE) < sizeof (UINTN)) ? (TYPE)(__builtin_va_arg(Marker, UINTN)) : (TYPE) __builtin_va_arg(Marker, TYPE))
#define VA_END(Marker) __builtin_ms_va_end (Marker)
#define VA_COPY(Dest, Start) __builtin_ms_va_copy (Dest, Start)
#else
typedef __builtin_va_list VA_LIST;
#define VA_START(Marker, Parameter) __builtin_va_start (Marker, Parameter)
#define VA_ARG(Marker, TYPE)                                                                                           \
  ((sizeof (TYPE) < sizeof (UINTN)) ? (TYPE)(__builtin_va_arg(Marker, UINTN)) : (TYPE) __builtin_va_arg(Marker, TYPE))
#define VA_END(Marker) __builtin_va_end (Marker)
#define VA_COPY(Dest, Start) __builtin_va_copy (Dest, Start)
#endif

///
/// 128-bit buffer containing a unique identifier value.
///
typedef struct {
  UINT32 Data1;
  UINT16 Data2;
  UINT16 Data3;
  UINT8 Data4[8];
} GUID;

STATIC_ASSERT (sizeof (GUID) == 16, "GUID is 16 bytes");

///
/// Doubly linked list node, as in EDK II's BaseLib.
///
typedef struct _LIST_ENTRY LIST_ENTRY;
struct _LIST_ENTRY {
  LIST_ENTRY *ForwardLink;
  LIST_ENTRY *BackLink;
};

typedef UINTN RETURN_STATUS;

#define ENCODE_ERROR(StatusCode) ((RETURN_STATUS)(MAX_BIT | (StatusCode)))
#define ENCODE_WARNING(StatusCode) ((RETURN_STATUS)(StatusCode))
#define RETURN_ERROR(StatusCode) (((INTN)(RETURN_STATUS)(StatusCode)) < 0)
#define MAX_BIT 0x8000000000000000ULL

#define RETURN_SUCCESS 0
#define RETURN_LOAD_ERROR ENCODE_ERROR (1)
#define RETURN_INVALID_PARAMETER ENCODE_ERROR (2)
#define RETURN_UNSUPPORTED ENCODE_ERROR (3)
#define RETURN_BAD_BUFFER_SIZE ENCODE_ERROR (4)
#define RETURN_BUFFER_TOO_SMALL ENCODE_ERROR (5)
#define RETURN_NOT_READY ENCODE_ERROR (6)
#define RETURN_DEVICE_ERROR ENCODE_ERROR (7)
#define RETURN_WRITE_PROTECTED ENCODE_ERROR (8)
#define RETURN_OUT_OF_RESOURCES ENCODE_ERROR (9)
#define RETURN_VOLUME_CORRUPTED ENCODE_ERROR (10)
#define RETURN_VOLUME_FULL ENCODE_ERROR (11)
#define RETURN_NO_MEDIA ENCODE_ERROR (12)
#define RETURN_MEDIA_CHANGED ENCODE_ERROR (13)
#define RETURN_NOT_FOUND ENCODE_ERROR (14)
#define RETURN_ACCESS_DENIED ENCODE_ERROR (15)
#define RETURN_NO_RESPONSE ENCODE_ERROR (16)
#define RETURN_NO_MAPPING ENCODE_ERROR (17)
#define RETURN_TIMEOUT ENCODE_ERROR (18)
#define RETURN_NOT_STARTED ENCODE_ERROR (19)
#define RETURN_ALREADY_STARTED ENCODE_ERROR (20)
#define RETURN_ABORTED ENCODE_ERROR (21)
#define RETURN_ICMP_ERROR ENCODE_ERROR (22)
#define RETURN_TFTP_ERROR ENCODE_ERROR (23)
#define RETURN_PROTOCOL_ERROR ENCODE_ERROR (24)
#define RETURN_INCOMPATIBLE_VERSION ENCODE_ERROR (25)
#define RETURN_SECURITY_VIOLATION ENCODE_ERROR (26)
#define RETURN_CRC_ERROR ENCODE_ERROR (27)
#define RETURN_END_OF_MEDIA ENCODE_ERROR (28)
#define RETURN_END_OF_FILE ENCODE_ERROR (31)
#define RETURN_INVALID_LANGUAGE ENCODE_ERROR (32)
#define RETURN_COMPROMISED_DATA ENCODE_ERROR (33)

#define RETURN_WARN_UNKNOWN_GLYPH ENCODE_WARNING (1)
#define RETURN_WARN_DELETE_FAILURE ENCODE_WARNING (2)
#define RETURN_WARN_WRITE_FAILURE ENCODE_WARNING (3)
#define RETURN_WARN_BUFFER_TOO_SMALL ENCODE_WARNING (4)
#define RETURN_WARN_STALE_DATA ENCODE_WARNING (5)
#define RETURN_WARN_FILE_SYSTEM ENCODE_WARNING (6)
#define RETURN_WARN_RESET_REQUIRED ENCODE_WARNING (7)

#endif
