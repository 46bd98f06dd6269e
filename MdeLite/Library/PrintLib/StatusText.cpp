/** @file
  The standard texts of status codes, as %r prints them.
**/
#include "PrintLibInternal.h"

//
// Indexed by the warning code (the status itself).
//
STATIC CONST CHAR8 *CONST mWarningText[] = {
  "Success",                  // RETURN_SUCCESS
  "Warning Unknown Glyph",    // 1
  "Warning Delete Failure",   // 2
  "Warning Write Failure",    // 3
  "Warning Buffer Too Small", // 4
  "Warning Stale Data",       // 5
  "Warning File System",      // 6
  "Warning Reset Required",   // 7
};

//
// Indexed by the error code (the status without MAX_BIT); entry 0 is unused.
//
STATIC CONST CHAR8 *CONST mErrorText[] = {
  nullptr,
  "Load Error",           // RETURN_LOAD_ERROR
  "Invalid Parameter",    // RETURN_INVALID_PARAMETER
  "Unsupported",          // RETURN_UNSUPPORTED
  "Bad Buffer Size",      // RETURN_BAD_BUFFER_SIZE
  "Buffer Too Small",     // RETURN_BUFFER_TOO_SMALL
  "Not Ready",            // RETURN_NOT_READY
  "Device Error",         // RETURN_DEVICE_ERROR
  "Write Protected",      // RETURN_WRITE_PROTECTED
  "Out of Resources",     // RETURN_OUT_OF_RESOURCES
  "Volume Corrupt",       // RETURN_VOLUME_CORRUPTED
  "Volume Full",          // RETURN_VOLUME_FULL
  "No Media",             // RETURN_NO_MEDIA
  "Media changed",        // RETURN_MEDIA_CHANGED
  "Not Found",            // RETURN_NOT_FOUND
  "Access Denied",        // RETURN_ACCESS_DENIED
  "No Response",          // RETURN_NO_RESPONSE
  "No mapping",           // RETURN_NO_MAPPING
  "Time out",             // RETURN_TIMEOUT
  "Not started",          // RETURN_NOT_STARTED
  "Already started",      // RETURN_ALREADY_STARTED
  "Aborted",              // RETURN_ABORTED
  "ICMP Error",           // RETURN_ICMP_ERROR
  "TFTP Error",           // RETURN_TFTP_ERROR
  "Protocol Error",       // RETURN_PROTOCOL_ERROR
  "Incompatible Version", // RETURN_INCOMPATIBLE_VERSION
  "Security Violation",   // RETURN_SECURITY_VIOLATION
  "CRC Error",            // RETURN_CRC_ERROR
  "End of Media",         // RETURN_END_OF_MEDIA
  "Reserved (29)",        // 29
  "Reserved (30)",        // 30
  "End of File",          // RETURN_END_OF_FILE
  "Invalid Language",     // RETURN_INVALID_LANGUAGE
  "Compromised Data",     // RETURN_COMPROMISED_DATA
  "IP Address Conflict",  // 34
  "HTTP Error",           // 35
};

STATIC_ASSERT (ARRAY_SIZE (mErrorText) == 36, "error texts up to HTTP Error");

CONST CHAR8 *
InternalStatusText (IN RETURN_STATUS Status)
{
  if (RETURN_ERROR (Status)) {
    RETURN_STATUS Code = Status & ~(RETURN_STATUS)MAX_BIT;
    return (Code < ARRAY_SIZE (mErrorText)) ? mErrorText[Code] : nullptr;
  }

  return (Status < ARRAY_SIZE (mWarningText)) ? mWarningText[Status] : nullptr;
}
