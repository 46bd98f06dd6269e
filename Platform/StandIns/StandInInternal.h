/** @file
  State shared by the files of the page engine and UI framework stand-ins.

  All of it is zero at load (constant initialisation) and lives in pool only
  through the records below; each stand-in's uninstall releases what it owns.
**/
#ifndef STAND_IN_INTERNAL_H_
#define STAND_IN_INTERNAL_H_

extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Protocol/GraphicsOutput.h>
#include <Protocol/PageEngine.h>
#include <Protocol/UiFramework.h>
#include <StandIns/PageEngineStandIn.h>
#include <StandIns/StandInCalls.h>
#include <StandIns/UiFrameworkStandIn.h>
#include <Uefi.h>

//
// Handles: a page is PAGE_HANDLE_BASE + its serial number (from 1); a control
// carries its page's serial number and its own index, so both are found
// without a search.
//
#define STAND_IN_PAGE_HANDLE_BASE 0x50470000U
#define STAND_IN_CONTROL_HANDLE_BASE 0x43000000U
#define STAND_IN_IMAGE_VALUE_BASE 0x494D0000U
#define STAND_IN_MAX_PAGES 4095U
#define STAND_IN_MAX_CONTROLS 4095U
#define STAND_IN_MAX_IMAGES 0xFFFFU

///
/// The longest text copied from a caller, in characters.
///
#define STAND_IN_MAX_TEXT 0x10000U

typedef struct {
  UINT32 Tag;
  UINTN Value[3];
} STAND_IN_ATTRIBUTE;

typedef struct {
  UINTN Handle;
  STAND_IN_CONTROL_KIND Kind;
  UINTN Container;
  EFI_HII_HANDLE HiiHandle;
  UINTN Argument;
  UINTN Minimum;
  UINTN Maximum;
  UI_EVENT_HANDLER Handler;
  STAND_IN_ATTRIBUTE *Attributes; ///< one per tag, pool
  UINTN AttributeCount;
  UINTN AttributeCapacity;
  UINTN AttributeWrites;
  CHAR16 *TextCopy; ///< pool, or null
  EFI_HII_HANDLE TextHiiHandle;
  EFI_STRING_ID TextStringId;
  UI_IMAGE_RECORD ImageRecord; ///< what GetControlStyle 0x73740025 points to
} STAND_IN_CONTROL;

typedef struct {
  UINTN ShowCount;
  CHAR16 *Title; ///< pool copies, or null
  CHAR16 *Message;
  CHAR16 *Caption;
  UINTN Reserved;
  UINTN MaxLength;
  UI_EVENT_HANDLER Handler;
} STAND_IN_PROMPT;

typedef struct {
  UINTN Handle;
  UINTN PageId;
  EFI_HII_HANDLE HiiHandle;
  UINTN ThemeId;
  BOOLEAN IsPrompt;
  BOOLEAN Destroyed;
  UINTN RefreshCount;
  UINTN DisplayCount;
  STAND_IN_CONTROL Self;       ///< page-wide attributes
  STAND_IN_CONTROL **Controls; ///< pool array of pool records
  UINTN ControlCount;
  UINTN ControlCapacity;
  STAND_IN_PROMPT Prompt;
} STAND_IN_PAGE;

typedef struct {
  BOOLEAN Installed;
  EFI_HANDLE Handle;
  STAND_IN_PAGE **Pages; ///< pool array of pool records, in creation order
  UINTN PageCount;
  UINTN PageCapacity;
  UINTN LiveCount;
  UINTN SerialOffset; ///< pages made before the last release; kept over reinstalls
} STAND_IN_PAGE_MODEL;

typedef struct {
  EFI_HII_HANDLE HiiHandle;
  EFI_STRING_ID StringId;
  CHAR16 *String; ///< pool
} STAND_IN_STRING;

typedef struct {
  CHAR16 *Name; ///< pool
  VOID *Data;   ///< pool
  UINTN Size;
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels; ///< pool, decoded on first use
  UINTN Width;
  UINTN Height;
  BOOLEAN Decoded; ///< a decode was tried for the current data
  EFI_STATUS DecodeStatus;
} STAND_IN_IMAGE;

typedef struct {
  BOOLEAN Installed;
  EFI_HANDLE Handle;
  EFI_STATUS SessionStatus;
  STAND_IN_FRAMEWORK_STATE State;
  UINTN *Modes; ///< pool
  UINTN ModeCapacity;
  STAND_IN_IMAGE_PACKAGE *Packages; ///< pool
  UINTN PackageCapacity;
  STAND_IN_STRING *Strings; ///< pool
  UINTN StringCount;
  UINTN StringCapacity;
  STAND_IN_IMAGE *Images; ///< pool
  UINTN ImageCapacity;
  STAND_IN_DELIVERY *Deliveries; ///< pool
  UINTN DeliveryCount;
  UINTN DeliveryCapacity;
  STAND_IN_EVENT_SOURCE Source;
  VOID *SourceContext;
  BOOLEAN ExitRequested[STAND_IN_MAX_LOOP_DEPTH];
} STAND_IN_FRAMEWORK;

extern STAND_IN_PAGE_MODEL gStandInModel;
extern STAND_IN_FRAMEWORK gStandInFramework;

//
// The framework's tables, each made by the file of its operations.
//
extern UI_SERVICES gStandInServices;        // UiServices.cpp
extern UI_STRING_TABLE gStandInStringTable; // UiStrings.cpp
extern UI_IMAGE_TABLE gStandInImageTable;   // UiImages.cpp
extern UI_ATTRIBUTES gStandInAttributes;    // UiAttributes.cpp
extern UI_PAGES gStandInPagesTable;         // UiPages.cpp

//
// Call log (StandInCalls.cpp).
//

/**
  Counts the call, shows it to the observer, and takes a failure that a test
  set for it.

  @return TRUE when the operation is to act; FALSE with *Status to return.
**/
BOOLEAN
StandInEnter (IN STAND_IN_OPERATION Operation,
              IN CONST UINTN *Arguments,
              IN UINTN ArgumentCount,
              OUT EFI_STATUS *Status);

/** Shows a call to the observer without counting it or failing it. **/
VOID StandInObserve (IN STAND_IN_OPERATION Operation, IN CONST UINTN *Arguments, IN UINTN ArgumentCount);

/**
  StandInEnter for an operation of the UI framework, which also refuses to act
  (EFI_NOT_STARTED) while the framework is not installed: nothing is made in
  pool that its uninstall would not release.
**/
BOOLEAN
StandInEnterFramework (IN STAND_IN_OPERATION Operation,
                       IN CONST UINTN *Arguments,
                       IN UINTN ArgumentCount,
                       OUT EFI_STATUS *Status);

/** Counts a refused call. @return Status. **/
EFI_STATUS
StandInReject (IN STAND_IN_OPERATION Operation, IN EFI_STATUS Status);

//
// Pool helpers (StandInPool.cpp).
//

/**
  Makes room for one more element in a pool array, doubling its capacity.

  @retval EFI_SUCCESS           (*Array)[Count] may be written.
  @retval EFI_OUT_OF_RESOURCES  No pool, or the size would overflow; the array is unchanged.
**/
EFI_STATUS
StandInGrowArray (IN OUT VOID **Array, IN OUT UINTN *Capacity, IN UINTN Count, IN UINTN ElementSize);

/**
  Copies a caller's null-terminated text into pool.

  @retval EFI_SUCCESS            *Copy is the copy (null for a null Text).
  @retval EFI_INVALID_PARAMETER  No terminator within STAND_IN_MAX_TEXT characters.
  @retval EFI_OUT_OF_RESOURCES   No pool.
**/
EFI_STATUS
StandInCopyText (IN CONST CHAR16 *Text OPTIONAL, OUT CHAR16 **Copy);

/** Makes room for element Count of a typed pool array (see StandInGrowArray). **/
template <typename TYPE>
inline EFI_STATUS
StandInGrow (IN OUT TYPE *&Array, IN OUT UINTN &Capacity, IN UINTN Count)
{
  VOID *Raw = Array;
  // Arrays of records and arrays of pointers to records are both grown here.
  EFI_STATUS Status = StandInGrowArray (&Raw, &Capacity, Count, sizeof (TYPE)); // NOLINT(bugprone-sizeof-expression)

  Array = (TYPE *)Raw;
  return Status;
}

/** Frees Buffer when it is set and clears it. **/
template <typename TYPE>
inline VOID
StandInFree (IN OUT TYPE *&Buffer)
{
  if (Buffer != nullptr) {
    FreePool ((VOID *)Buffer);
    Buffer = nullptr;
  }
}

//
// Page model (PageModel.cpp).
//

/** @return the page of Handle, destroyed or not, or null. **/
STAND_IN_PAGE *StandInLookUpPage (IN UINTN Handle);

/** @return the page of Handle when it is not destroyed, else null. **/
STAND_IN_PAGE *StandInLookUpLivePage (IN UINTN Handle);

/** @return the control of Page with handle Control (the page itself for the page handle), or null. **/
STAND_IN_CONTROL *StandInLookUpControl (IN STAND_IN_PAGE *Page, IN UINTN Control);

/** @return the control of Handle on whichever live page it is, or null (not for prompt ids). **/
STAND_IN_CONTROL *StandInLookUpControlAnywhere (IN UINTN Handle);

/** @return the prompt page made last that is not destroyed, or null. **/
STAND_IN_PAGE *StandInLatestPromptPage (VOID);

/**
  Makes a page.

  @retval EFI_SUCCESS           *Page is the new page.
  @retval EFI_OUT_OF_RESOURCES  No pool, or STAND_IN_MAX_PAGES pages were made.
**/
EFI_STATUS
StandInNewPage (IN UINTN PageId, IN EFI_HII_HANDLE HiiHandle, IN UINTN ThemeId, OUT STAND_IN_PAGE **Page);

/**
  Makes a control on Page. Handle 0 gives it a handle of its own; a non-zero
  Handle (the prompt's fixed ids) is used as it is.

  @retval EFI_SUCCESS           *Control is the new control.
  @retval EFI_OUT_OF_RESOURCES  No pool, or STAND_IN_MAX_CONTROLS controls were made on the page.
**/
EFI_STATUS
StandInNewControl (IN STAND_IN_PAGE *Page,
                   IN UINTN Handle,
                   IN STAND_IN_CONTROL_KIND Kind,
                   IN UINTN Container,
                   OUT STAND_IN_CONTROL **Control);

/** Marks Page destroyed; the framework's active page is dropped when it was Page. **/
VOID StandInDestroyPage (IN STAND_IN_PAGE *Page);

/** Releases every page and clears the model (not Installed, Handle and the serial numbers). **/
VOID StandInReleasePages (VOID);

/** Slot 3 of the page engine (PromptPage.cpp). **/
EFI_STATUS
EFIAPI
PageEngineCreatePromptPage (IN UINTN Reserved, OUT UINTN *Page, OUT PROMPT_INTERFACE **Prompt);

//
// Attributes (ControlAttributes.cpp).
//

/** @return the attribute record of Tag on Control, or null. **/
STAND_IN_ATTRIBUTE *StandInFindAttribute (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag);

/**
  Stores (Tag -> V1, V2, V3) on Control, replacing an earlier value of Tag.

  @retval EFI_SUCCESS           Stored.
  @retval EFI_OUT_OF_RESOURCES  No pool; nothing changed.
**/
EFI_STATUS
StandInStoreAttribute (IN STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3);

/**
  Sets Control's text: a copy of String when it is set, else the reference
  (HiiHandle, StringId), which is empty for StringId 0.

  @retval EFI_SUCCESS            Set.
  @retval EFI_INVALID_PARAMETER  String has no terminator within STAND_IN_MAX_TEXT characters.
  @retval EFI_OUT_OF_RESOURCES   No pool; nothing changed.
**/
EFI_STATUS
StandInSetText (IN STAND_IN_CONTROL *Control,
                IN CONST CHAR16 *String OPTIONAL,
                IN EFI_HII_HANDLE HiiHandle,
                IN EFI_STRING_ID StringId);

/** Releases what Control holds in pool (not the record itself). **/
VOID StandInReleaseControl (IN STAND_IN_CONTROL *Control);

//
// Strings and images of the framework (UiStrings.cpp, UiImages.cpp, BmpDecode.cpp).
//

/**
  Looks a string up through EFI_HII_STRING_PROTOCOL ("en-US") and keeps a copy.

  @retval EFI_SUCCESS  *String is the framework's copy.
  @return the status of the look-up, or EFI_OUT_OF_RESOURCES.
**/
EFI_STATUS
StandInLookUpString (IN EFI_HII_HANDLE HiiHandle, IN EFI_STRING_ID StringId, OUT CHAR16 **String);

/** Releases every string copy. **/
VOID StandInReleaseStrings (VOID);

/** @return the image of an image value, or null for 0 and unknown values. **/
STAND_IN_IMAGE *StandInLookUpImage (IN UINTN ImageValue);

/**
  Decodes the image's data once and gives its pixels.

  @retval EFI_SUCCESS      Image->Pixels, Width and Height are set.
  @retval EFI_UNSUPPORTED  The data is not a BMP file that can be decoded.
  @retval EFI_OUT_OF_RESOURCES  No pool for the pixels.
**/
EFI_STATUS
StandInDecodeImage (IN STAND_IN_IMAGE *Image);

/** @return the image held under Name, or null. **/
STAND_IN_IMAGE *StandInFindImage (IN CONST CHAR16 *Name);

/** Releases every image. **/
VOID StandInReleaseImages (VOID);

/**
  Decodes a BMP file (1, 4, 8, 24 or 32 bits per pixel, uncompressed) into
  top-down BLT pixels.

  @retval EFI_SUCCESS           *Pixels is a pool buffer of Width x Height pixels.
  @retval EFI_UNSUPPORTED       Not a BMP file of these kinds, or not whole.
  @retval EFI_OUT_OF_RESOURCES  No pool.
**/
EFI_STATUS
StandInDecodeBmp (
  IN CONST VOID *Data, IN UINTN Size, OUT EFI_GRAPHICS_OUTPUT_BLT_PIXEL **Pixels, OUT UINTN *Width, OUT UINTN *Height);

//
// Events (EventLoop.cpp).
//

/** Slots 9 and 10 of the framework's pages table. **/
EFI_STATUS
EFIAPI
StandInRunEventLoop (VOID);

EFI_STATUS
EFIAPI
StandInExitEventLoop (VOID);

/** Hands Event to its handler and records the delivery. @return the handler's result. **/
UINTN
StandInDispatchEvent (IN OUT UI_EVENT *Event);

/** Releases the delivery history. **/
VOID StandInReleaseDeliveries (VOID);

//
// Keys on the active prompt page (PromptKeys.cpp), as the firmware event
// source hands them over.
//

#define STAND_IN_FIELD_LIMIT 256U ///< the most characters a submitted text carries

typedef enum {
  StandInKeyPassed, ///< not the prompt's: the key goes out as a key event
  StandInKeyTyped,  ///< the field took it; no event
  StandInKeyEvent   ///< it became *Event (Enter submits, Escape cancels)
} STAND_IN_KEY_USE;

/**
  Takes a key for the active page when it is a prompt page: printable
  characters (up to the length given to ShowPrompt) and Backspace edit the
  password field and redraw it, Enter makes a text-submitted event with a copy
  of the field's text, Escape an activation of the cancel control.
**/
STAND_IN_KEY_USE
StandInPromptKey (IN UINT16 ScanCode, IN CHAR16 Character, OUT UI_EVENT *Event);

/**
  Empties the field of the last submit when its handler left the submitted
  text in it; called before the next event is taken.
**/
VOID StandInSettleSubmittedText (VOID);

/** Forgets a submit without looking at its field (a new event source starts). **/
VOID StandInForgetSubmittedText (VOID);

#endif
