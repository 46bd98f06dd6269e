/** @file
  Fixture of the flash page tests: a page flow boot whose test acts as the
  firmware-update driver, through the FLASH_UPDATE_PAGE_PROTOCOL found on the
  driver's image handle, and reads back the flash page, its six controls and
  the calls that reached the page engine and the UI framework.
**/
#ifndef FLASH_PAGE_FLOW_H_
#define FLASH_PAGE_FLOW_H_

#include "PageFlowTest.h"

#include <Protocol/FlashUpdatePage.h>

constexpr UINTN kAny = MAX_UINTN; ///< an expected argument that comparisons skip
constexpr UINTN kContainer = 1001;
constexpr UINTN kRed = 0xDC5034;
constexpr UINTN kGreen = 0x7AB800;
constexpr UINTN kWhite = 0xFFFFFF;
constexpr UINT32 kTextTag = 0x64611A00;
constexpr UINT32 kValueTag = 0x64611202;
constexpr UINT32 kColourTag = 0x73740011;

extern const std::u16string gFlashWarning;

///
/// The flash page and its controls in the order made.
///
struct FlashControls {
  UINTN Page = 0;
  UINTN Logo = 0;
  UINTN Progress = 0;
  UINTN Message = 0;
  UINTN Status = 0;
  UINTN Label = 0;
  UINTN Percent = 0;
};

/** @return "Name(a, b, ...)" with hex arguments; those that Pattern has as kAny read "*". **/
std::string Describe (const FlowCall &Call, const FlowCall &Pattern = {});

/** @return each call described, with the arguments that the same entry of Pattern skips as "*". **/
std::vector<std::string> Describe (const std::vector<FlowCall> &Calls, const std::vector<FlowCall> &Pattern);

class FlashPageTest : public PageFlowTest {
protected:
  /**
    Boots the driver and finds its flash page protocol. With CountdownItem 0
    or more, the welcome page runs first with item 1183 set to it and closes
    on Enter, so that its countdown is what the flash page inherits.
  **/
  ::testing::AssertionResult BootFlash (int CountdownItem = -1);

  FLASH_UPDATE_PAGE_PROTOCOL &
  Flash ()
  {
    return *mFlash;
  }

  /** Shows the page. @return FlashPageMadeLast (). **/
  FlashControls ShowFlash ();
  FlashControls FlashPageMadeLast ();
  static UINTN LiveFlashPages ();

  //
  // The calls since a mark, and the calls expected.
  //
  UINTN
  Mark () const
  {
    return mLog.size ();
  }

  std::vector<std::string> CallsSince (UINTN Start, const std::vector<FlowCall> &Expected) const;
  static FlowCall Attribute (UINTN Page, UINTN Control, UINT32 Tag, UINTN V1, UINTN V2 = 0, UINTN V3 = 0);
  std::vector<FlowCall> ProgressCalls (const FlashControls &Flash, UINTN Percent) const; ///< a value up to 100
  static std::vector<FlowCall> ExitCalls (UINTN Page); ///< the handler's close, after the bar

  //
  // Events handed to the page without a loop; mCodeAfter is the event's code when the handler returned.
  //
  UINTN DeliverTick (UINTN Control, UINT8 Second);
  UINTN Deliver (UI_EVENT Event);

  //
  // What the page shows.
  //
  static UINTN Bar (const FlashControls &Flash);
  static UINTN Colour (UINTN Page, UINTN Control);
  static std::u16string Percentage (UINTN Value); ///< "   Value%"
  std::u16string String (EFI_STRING_ID Id) const; ///< the driver's string, through the framework
  static STAND_IN_FRAMEWORK_STATE Framework ();

  FLASH_UPDATE_PAGE_PROTOCOL *mFlash = nullptr;
  EFI_HII_HANDLE mHii = nullptr;
  UINTN mCodeAfter = 0;
};

#endif
