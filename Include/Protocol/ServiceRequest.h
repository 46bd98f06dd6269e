/** @file
  SERVICE_REQUEST_PROTOCOL: a generic request channel to other firmware
  services, and the password request block that travels over it.

  PASSWORD_REQUEST is the password service's wire format: the layout below is
  fixed and checked at compile time.
**/
#ifndef KEST_SERVICE_REQUEST_PROTOCOL_H_
#define KEST_SERVICE_REQUEST_PROTOCOL_H_

#include <Uefi.h>

#define SERVICE_REQUEST_PROTOCOL_GUID                                                                                  \
  {                                                                                                                    \
    0xe492b063, 0xe846, 0x4810,                                                                                        \
    {                                                                                                                  \
      0xa9, 0x68, 0x01, 0xbc, 0x24, 0x33, 0x97, 0x74                                                                   \
    }                                                                                                                  \
  }

///
/// Request family of the password requests.
///
#define PASSWORD_REQUEST_GUID                                                                                          \
  {                                                                                                                    \
    0xc45a22c5, 0x55c4, 0x4ada,                                                                                        \
    {                                                                                                                  \
      0xaa, 0x0b, 0x47, 0x8f, 0x99, 0x08, 0xcc, 0x8a                                                                   \
    }                                                                                                                  \
  }

///
/// Request family of the pre-Setup request; its block is the one-byte gate cell.
///
#define PRE_SETUP_REQUEST_GUID                                                                                         \
  {                                                                                                                    \
    0x344dddaf, 0xc73c, 0x4650,                                                                                        \
    {                                                                                                                  \
      0x9a, 0xae, 0x8d, 0x08, 0x78, 0x03, 0x69, 0x83                                                                   \
    }                                                                                                                  \
  }

/**
  Submits a request.

  @param[in]     RequestFamily  Names the family of requests.
  @param[in,out] Request        The request block of that family.
**/
typedef EFI_STATUS (EFIAPI *SERVICE_SUBMIT_REQUEST) (IN EFI_GUID *RequestFamily, IN OUT VOID *Request);

typedef struct {
  VOID *Slot0;
  VOID *Slot1;
  SERVICE_SUBMIT_REQUEST SubmitRequest; // 2
} SERVICE_REQUEST_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (SERVICE_REQUEST_PROTOCOL, SubmitRequest) == 2 * 8, "service request slot 2");

typedef enum : UINT32 {
  PasswordRequestGetCount = 1,
  PasswordRequestGetInfo = 2,
  PasswordRequestGetState = 3,
  PasswordRequestCheck = 5,
  PasswordRequestCheckAlternate = 6
} PASSWORD_REQUEST_CODE;

#pragma pack(1)
typedef struct {
  UINT64 Index;   ///< the record's Index; 0 for the count
  UINT32 Request; ///< PASSWORD_REQUEST_CODE
  UINT32 Padding;
  EFI_STATUS Status; ///< preset by the caller, written by the service
  UINT64 Data;       ///< address of the request's data
} PASSWORD_REQUEST;

///
/// The GetInfo request: the header and, behind it, the nine addresses where the
/// service stores each attribute of the password.
///
typedef struct {
  PASSWORD_REQUEST Header;
  UINT64 Discarded; ///< address of a 16-byte area
  UINT64 Kind;
  UINT64 NarrowChars;
  UINT64 InfoValue3;
  UINT64 MaxAttempts;
  UINT64 InfoValue5;
  UINT64 MaxLength;
  UINT64 InfoBlock7; ///< address of a 4,096-byte area
  UINT64 InfoValue8;
} PASSWORD_INFO_REQUEST;
#pragma pack()

STATIC_ASSERT (OFFSET_OF (PASSWORD_REQUEST, Index) == 0, "password request Index");
STATIC_ASSERT (OFFSET_OF (PASSWORD_REQUEST, Request) == 8, "password request code");
STATIC_ASSERT (OFFSET_OF (PASSWORD_REQUEST, Status) == 16, "password request Status");
STATIC_ASSERT (OFFSET_OF (PASSWORD_REQUEST, Data) == 24, "password request Data");
STATIC_ASSERT (sizeof (PASSWORD_REQUEST) == 32, "password request header");
STATIC_ASSERT (OFFSET_OF (PASSWORD_INFO_REQUEST, Discarded) == 32, "GetInfo addresses follow the header");
STATIC_ASSERT (sizeof (PASSWORD_INFO_REQUEST) == 104, "GetInfo block is 104 bytes");

#define PASSWORD_INFO_BLOCK_SIZE 4096
#define PASSWORD_INFO_DISCARDED_SIZE 16

extern EFI_GUID gServiceRequestProtocolGuid;
extern EFI_GUID gPasswordRequestGuid;
extern EFI_GUID gPreSetupRequestGuid;

#endif
