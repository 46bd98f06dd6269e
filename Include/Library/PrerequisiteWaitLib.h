/** @file
  Prerequisite wait: calls a function once, as soon as every protocol of a list
  is installed.
**/
#ifndef KEST_PREREQUISITE_WAIT_LIB_H_
#define KEST_PREREQUISITE_WAIT_LIB_H_

#include <Uefi.h>

#define PREREQ_WAIT_SIGNATURE SIGNATURE_32 ('P', 'R', 'e', 'q')

typedef EFI_STATUS (EFIAPI *PREREQ_WAIT_FUNCTION) (IN VOID *Context1, IN VOID *Context2);

///
/// The record of one wait. The GUID copies and the found flags live in one
/// pool block that Guids points to; FoundFlags points behind the last GUID.
///
typedef struct {
  UINT32 Signature;
  BOOLEAN Done;
  VOID *Registration;
  PREREQ_WAIT_FUNCTION Function;
  VOID *Context1;
  VOID *Context2;
  UINT32 ProtocolCount;
  UINT32 FoundCount;
  EFI_GUID *Guids;
  UINT8 *FoundFlags;
  EFI_EVENT Event; ///< the notification event; closed by CancelPrerequisiteWait
} PREREQ_WAIT;

STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Signature) == 0, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Done) == 4, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Registration) == 8, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Function) == 16, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Context1) == 24, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Context2) == 32, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, ProtocolCount) == 40, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, FoundCount) == 44, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, Guids) == 48, "wait record layout");
STATIC_ASSERT (OFFSET_OF (PREREQ_WAIT, FoundFlags) == 56, "wait record layout");
STATIC_ASSERT (sizeof (PREREQ_WAIT) == 72, "wait record layout");

/**
  Registers a wait for the protocols named by the null-terminated list of GUID
  pointers that follows Context2. Protocols already installed are seen at once.

  @param[in] Previous  An earlier wait; must be null (nothing else is supported).
  @param[in] Function  Called once, with Context1 and Context2, when all are installed.

  @return the new wait, or null when Previous is not null, the list is empty, or
          pool, the event or a registration could not be had.
**/
PREREQ_WAIT *EFIAPI RegisterPrerequisiteWait (
  IN PREREQ_WAIT *Previous OPTIONAL, IN PREREQ_WAIT_FUNCTION Function, IN VOID *Context1, IN VOID *Context2, ...);

/**
  Ends a wait: closes its event and releases the record. Used when the image
  that registered it is unloaded, so that no notification reaches code that is
  gone. A null or unknown record is ignored.
**/
VOID EFIAPI CancelPrerequisiteWait (IN PREREQ_WAIT *Wait);

#endif
