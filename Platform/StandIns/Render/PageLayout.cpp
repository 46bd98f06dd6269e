/** @file
  Where the controls of an ordinary page go (StandInRender.h gives the rules):
  first the controls placed at an offset and the title, then the controls that
  hang below or beside one already placed, then the rest as one block, ordered
  by role and centred in the room left below, each again with what hangs from
  it. Every control is placed once: the page costs time in its control count.
**/
#include "RenderInternal.h"

#define TEXT_PADDING 8U        ///< pixels above and below a line of text
#define TEXT_WIDTH_PERCENT 90U ///< default width of a text line
#define PROGRESS_WIDTH_PERCENT 60U
#define PROGRESS_HEIGHT_PERCENT 2U
#define IMAGE_PERCENT 30U
#define TITLE_TOP_PERCENT 4U ///< the title's distance from the top of the screen

//
// V1 of the layout style 0x73740000 (the last one written counts).
//
#define PLACE_TITLE 0x1U      ///< at the top of the page
#define PLACE_BESIDE_BAR 0x4U ///< right of the page's first progress bar
#define PLACE_BELOW 0x40U     ///< below another control: V2 side, V3 the control
#define PLACE_AT 0x100U       ///< top-left corner at (V2 %, V3 %) of the screen
#define BELOW_LEFT 3U         ///< V2 of PLACE_BELOW: left edges lined up (else centred)

//
// V1 of the alignment style 0x73740001 that puts a text's rows at the top of
// its box.
//
#define ALIGN_TOP 4U
#define ALIGN_TOP_TOO 5U

#define NO_SLOT MAX_UINTN

typedef struct {
  RENDER_BOX Room; ///< the control's size at its place; margins are inside it
  UINTN Anchor;    ///< the control this one is placed from, or NO_SLOT
  UINTN Followers; ///< first control placed from this one, or NO_SLOT
  UINTN Next;      ///< next control placed from the same anchor, or NO_SLOT
  UINTN Align;     ///< RENDER_TEXT_ flags
  BOOLEAN Placed;
  BOOLEAN InBlock; ///< placed in the block, so moved with it
} LAYOUT_SLOT;

typedef struct {
  CONST RENDER_CANVAS *Canvas;
  STAND_IN_PAGE *Page;
  LAYOUT_SLOT *Slots; ///< one per control, in creation order
  UINTN *Queue;       ///< one per control: controls whose followers are still to place
  UINTN Bottom;       ///< lowest edge placed so far
  BOOLEAN Any;        ///< something is placed
} LAYOUT;

STATIC
UINTN
Percent (IN UINTN Total, IN UINTN Value)
{
  return (Total * ((Value > 100) ? 100 : Value)) / 100;
}

/**
  Gives the size of a control's room: its size attribute (4, w%, h%) when set,
  else the default of its kind.
**/
STATIC
VOID
ControlSize (IN CONST RENDER_CANVAS *Canvas, IN CONST STAND_IN_CONTROL *Control, OUT RENDER_BOX *Box)
{
  STAND_IN_ATTRIBUTE *Size = StandInFindAttribute (Control, UI_PROPERTY_SIZE);

  Box->X = 0;
  Box->Y = 0;
  if ((Size != nullptr) && (Size->Value[0] == 4)) {
    Box->Width = Percent (Canvas->Width, Size->Value[1]);
    Box->Height = Percent (Canvas->Height, Size->Value[2]);
    return;
  }

  switch (Control->Kind) {
    case StandInControlImage:
      Box->Width = Percent (Canvas->Width, IMAGE_PERCENT);
      Box->Height = Percent (Canvas->Height, IMAGE_PERCENT);
      break;
    case StandInControlProgress:
      Box->Width = Percent (Canvas->Width, PROGRESS_WIDTH_PERCENT);
      Box->Height = Percent (Canvas->Height, PROGRESS_HEIGHT_PERCENT) + 2 * TEXT_PADDING;
      break;
    default:
      Box->Width = Percent (Canvas->Width, TEXT_WIDTH_PERCENT);
      Box->Height = RENDER_GLYPH_HEIGHT * RenderScale (Control, UI_STYLE_FONT) + 2 * TEXT_PADDING;
      break;
  }
}

/**
  Gives the box a control draws in: its room less the margins 0x7072000C (V1
  top, V2 left, V3 right, percent of the screen); a margin that would leave
  nothing is not taken.
**/
STATIC
VOID
InsideMargins (IN CONST RENDER_CANVAS *Canvas,
               IN CONST STAND_IN_CONTROL *Control,
               IN CONST RENDER_BOX *Room,
               OUT RENDER_BOX *Box)
{
  STAND_IN_ATTRIBUTE *Margin = StandInFindAttribute (Control, UI_PROPERTY_MARGIN);

  *Box = *Room;
  if (Margin == nullptr) {
    return;
  }

  UINTN Top = Percent (Canvas->Height, Margin->Value[0]);
  UINTN Left = Percent (Canvas->Width, Margin->Value[1]);
  UINTN Right = Percent (Canvas->Width, Margin->Value[2]);

  if (Left + Right < Box->Width) {
    Box->X += Left;
    Box->Width -= Left + Right;
  }

  if (Top < Box->Height) {
    Box->Y += Top;
    Box->Height -= Top;
  }
}

/**
  @return the slot of the control whose handle is Handle, or NO_SLOT. Handles
  grow in creation order, so the controls are sorted by them.
**/
STATIC
UINTN
SlotOfHandle (IN CONST STAND_IN_PAGE *Page, IN UINTN Handle)
{
  UINTN Low = 0;
  UINTN High = Page->ControlCount;

  while (Low < High) {
    UINTN Middle = Low + (High - Low) / 2;
    UINTN Found = Page->Controls[Middle]->Handle;

    if (Found == Handle) {
      return Middle;
    }

    if (Found < Handle) {
      Low = Middle + 1;
    } else {
      High = Middle;
    }
  }

  return NO_SLOT;
}

/** Puts a slot's room at (X, Y), cut to the screen's width, and notes its bottom. **/
STATIC
VOID
PlaceRoom (IN OUT LAYOUT *Layout, IN UINTN Slot, IN UINTN X, IN UINTN Y, IN BOOLEAN InBlock)
{
  LAYOUT_SLOT *Entry = &Layout->Slots[Slot];
  UINTN Width = Layout->Canvas->Width;

  Entry->Room.X = (X < Width) ? X : Width;
  Entry->Room.Y = Y;
  if (Entry->Room.Width > Width - Entry->Room.X) {
    Entry->Room.Width = Width - Entry->Room.X;
  }

  Entry->Placed = TRUE;
  Entry->InBlock = InBlock;
  if (!Layout->Any || (Y + Entry->Room.Height > Layout->Bottom)) {
    Layout->Bottom = Y + Entry->Room.Height;
  }

  Layout->Any = TRUE;
}

/** @return X that centres Width on the column Centre, kept on the screen. **/
STATIC
UINTN
CentredOn (IN CONST LAYOUT *Layout, IN UINTN Centre, IN UINTN Width)
{
  UINTN X = (Centre > Width / 2) ? Centre - Width / 2 : 0;

  if (X + Width > Layout->Canvas->Width) {
    X = (Width < Layout->Canvas->Width) ? Layout->Canvas->Width - Width : 0;
  }

  return X;
}

/** Places one control from its anchor, which is placed. **/
STATIC
VOID
PlaceFollower (IN OUT LAYOUT *Layout, IN UINTN Slot)
{
  LAYOUT_SLOT *Entry = &Layout->Slots[Slot];
  CONST LAYOUT_SLOT *Anchor = &Layout->Slots[Entry->Anchor];
  STAND_IN_CONTROL *Control = Layout->Page->Controls[Slot];
  UINTN Place = RenderAttribute (Control, UI_STYLE_LAYOUT, 0, 0);
  UINTN Y;
  UINTN X;

  if (Place == PLACE_BESIDE_BAR) {
    UINTN Middle = Anchor->Room.Y + Anchor->Room.Height / 2;

    Y = (Middle > Entry->Room.Height / 2) ? Middle - Entry->Room.Height / 2 : 0;
    PlaceRoom (Layout, Slot, Anchor->Room.X + Anchor->Room.Width + RENDER_GAP, Y, Anchor->InBlock);
    return;
  }

  Y = Anchor->Room.Y + Anchor->Room.Height + RENDER_GAP;
  if (RenderAttribute (Control, UI_STYLE_LAYOUT, 1, 0) == BELOW_LEFT) {
    RENDER_BOX AnchorBox;
    RENDER_BOX Own;

    //
    // The drawn boxes, margins taken off, share their left edge.
    //
    InsideMargins (Layout->Canvas, Layout->Page->Controls[Entry->Anchor], &Anchor->Room, &AnchorBox);
    InsideMargins (Layout->Canvas, Control, &Entry->Room, &Own);
    X = (AnchorBox.X > Own.X) ? AnchorBox.X - Own.X : 0;
  } else {
    X = CentredOn (Layout, Anchor->Room.X + Anchor->Room.Width / 2, Entry->Room.Width);
  }

  PlaceRoom (Layout, Slot, X, Y, Anchor->InBlock);
}

/** Places what hangs from First (just placed), and from those in turn, without recursion. **/
STATIC
VOID
PlaceFollowers (IN OUT LAYOUT *Layout, IN UINTN First)
{
  UINTN Count = 0;

  Layout->Queue[Count++] = First;
  while (Count > 0) {
    UINTN Anchor = Layout->Queue[--Count];

    for (UINTN Slot = Layout->Slots[Anchor].Followers; Slot != NO_SLOT; Slot = Layout->Slots[Slot].Next) {
      //
      // Each slot is placed, and queued, at most once, so the queue of one
      // entry per control cannot overflow.
      //
      if (!Layout->Slots[Slot].Placed) {
        PlaceFollower (Layout, Slot);
        Layout->Queue[Count++] = Slot;
      }
    }
  }
}

/**
  Gives each slot its size, its text alignment and, for a control placed from
  another, its anchor and its place in the anchor's list.
**/
STATIC
VOID
PrepareSlots (IN OUT LAYOUT *Layout)
{
  STAND_IN_PAGE *Page = Layout->Page;
  UINTN Bar = NO_SLOT;

  for (UINTN Slot = 0; (Slot < Page->ControlCount) && (Bar == NO_SLOT); Slot++) {
    Bar = (Page->Controls[Slot]->Kind == StandInControlProgress) ? Slot : NO_SLOT;
  }

  //
  // From the last control back, so that each anchor's list comes out in
  // creation order.
  //
  for (UINTN Slot = Page->ControlCount; Slot-- > 0;) {
    LAYOUT_SLOT *Entry = &Layout->Slots[Slot];
    STAND_IN_CONTROL *Control = Page->Controls[Slot];
    UINTN Place = RenderAttribute (Control, UI_STYLE_LAYOUT, 0, 0);
    UINTN Align = RenderAttribute (Control, UI_STYLE_ALIGN, 0, 0);

    ControlSize (Layout->Canvas, Control, &Entry->Room);
    Entry->Placed = FALSE;
    Entry->InBlock = FALSE;
    Entry->Followers = NO_SLOT;
    Entry->Next = NO_SLOT;
    Entry->Anchor = NO_SLOT;
    Entry->Align = ((Align == ALIGN_TOP) || (Align == ALIGN_TOP_TOO)) ? RENDER_TEXT_TOP : 0;
    if (Place == PLACE_BELOW) {
      Entry->Anchor = SlotOfHandle (Page, RenderAttribute (Control, UI_STYLE_LAYOUT, 2, 0));
      Entry->Align |= (RenderAttribute (Control, UI_STYLE_LAYOUT, 1, 0) == BELOW_LEFT) ? RENDER_TEXT_LEFT : 0;
    } else if (Place == PLACE_BESIDE_BAR) {
      Entry->Anchor = Bar;
      Entry->Align |= RENDER_TEXT_LEFT;
    }

    if (Entry->Anchor == Slot) {
      Entry->Anchor = NO_SLOT;
    }
  }

  //
  // Linked once all slots are reset: an anchor may come after its follower.
  //
  for (UINTN Slot = Page->ControlCount; Slot-- > 0;) {
    UINTN Anchor = Layout->Slots[Slot].Anchor;

    if (Anchor != NO_SLOT) {
      Layout->Slots[Slot].Next = Layout->Slots[Anchor].Followers;
      Layout->Slots[Anchor].Followers = Slot;
    }
  }
}

#define BLOCK_LEFT_OVER 3U ///< the round of the block after the three kinds

/** @return the order of a control's kind in the block: images, texts, progress bars. **/
STATIC
UINTN
BlockRank (IN CONST STAND_IN_CONTROL *Control)
{
  switch (Control->Kind) {
    case StandInControlImage:
      return 0;
    case StandInControlProgress:
      return 2;
    default:
      return 1;
  }
}

/**
  Places the controls that nothing placed yet: stacked by role below what is
  placed, each centred and followed by what hangs from it; then the block is
  moved down to the middle of the room left below it. A control whose anchor
  never got placed (a loop of anchors) joins the block like any other.
**/
STATIC
VOID
PlaceBlock (IN OUT LAYOUT *Layout)
{
  UINTN Top = Layout->Any ? Layout->Bottom + RENDER_GAP : 0;
  UINTN Y = Top;
  UINTN Height = Layout->Canvas->Height;

  //
  // Ranks 0 to 2 take the controls of their kind that hang from nothing; the
  // last round takes whatever is left, which hangs from a loop.
  //
  for (UINTN Rank = 0; Rank <= BLOCK_LEFT_OVER; Rank++) {
    for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
      LAYOUT_SLOT *Entry = &Layout->Slots[Slot];

      if (Entry->Placed || ((Rank < BLOCK_LEFT_OVER) &&
                            ((Entry->Anchor != NO_SLOT) || (BlockRank (Layout->Page->Controls[Slot]) != Rank)))) {
        continue;
      }

      PlaceRoom (Layout, Slot, CentredOn (Layout, Layout->Canvas->Width / 2, Entry->Room.Width), Y, TRUE);
      PlaceFollowers (Layout, Slot);
      Y = Layout->Bottom + RENDER_GAP;
    }
  }

  if ((Y == Top) || (Layout->Bottom >= Height)) {
    return;
  }

  UINTN Shift = (Height - Layout->Bottom) / 2;

  for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
    Layout->Slots[Slot].Room.Y += Layout->Slots[Slot].InBlock ? Shift : 0;
  }
}

/** Places every control of the page. **/
STATIC
VOID
PlaceAll (IN OUT LAYOUT *Layout)
{
  CONST RENDER_CANVAS *Canvas = Layout->Canvas;

  PrepareSlots (Layout);
  for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
    LAYOUT_SLOT *Entry = &Layout->Slots[Slot];
    STAND_IN_CONTROL *Control = Layout->Page->Controls[Slot];
    UINTN Place = RenderAttribute (Control, UI_STYLE_LAYOUT, 0, 0);

    if (Entry->Anchor != NO_SLOT) {
      continue;
    }

    if (Place == PLACE_AT) {
      PlaceRoom (Layout, Slot, Percent (Canvas->Width, RenderAttribute (Control, UI_STYLE_LAYOUT, 1, 0)),
                 Percent (Canvas->Height, RenderAttribute (Control, UI_STYLE_LAYOUT, 2, 0)), FALSE);
    } else if (Place == PLACE_TITLE) {
      PlaceRoom (Layout, Slot, CentredOn (Layout, Canvas->Width / 2, Entry->Room.Width),
                 Percent (Canvas->Height, TITLE_TOP_PERCENT), FALSE);
    }
  }

  //
  // Followers after all fixed controls, so that the room the block starts in
  // lies below all of them.
  //
  for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
    if (Layout->Slots[Slot].Placed) {
      PlaceFollowers (Layout, Slot);
    }
  }

  PlaceBlock (Layout);
}

/** Draws the visible controls at their places, texts through one reserved image. **/
STATIC
VOID
DrawAll (IN RENDER_CANVAS *Canvas, IN CONST LAYOUT *Layout, IN UINT32 Background, IN UINT32 Foreground)
{
  UINTN Largest = 0;

  for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
    STAND_IN_CONTROL *Control = Layout->Page->Controls[Slot];
    RENDER_BOX Box;

    if ((Control->Kind == StandInControlText) || (Control->Kind == StandInControlButton)) {
      InsideMargins (Canvas, Control, &Layout->Slots[Slot].Room, &Box);
      UINTN Pixels = RenderTextPixels (&Box, RenderScale (Control, UI_STYLE_FONT));

      Largest = (Pixels > Largest) ? Pixels : Largest;
    }
  }

  RenderReserveTexts (Canvas, Largest);
  for (UINTN Slot = 0; Slot < Layout->Page->ControlCount; Slot++) {
    STAND_IN_CONTROL *Control = Layout->Page->Controls[Slot];
    RENDER_BOX Box;

    if (RenderIsVisible (Control)) {
      InsideMargins (Canvas, Control, &Layout->Slots[Slot].Room, &Box);
      RenderControl (Canvas, Control, &Box, Layout->Slots[Slot].Align, Background, Foreground);
    }
  }

  RenderReleaseTexts (Canvas);
}

VOID
RenderPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page)
{
  RENDER_BOX Whole = {0, 0, Canvas->Width, Canvas->Height};
  UINT32 Background;
  UINT32 Foreground;
  LAYOUT Layout;
  UINTN Count = Page->ControlCount;

  RenderThemeColours (Page, &Background, &Foreground);
  RenderFill (Canvas, &Whole, Background);
  if (Count == 0) {
    return;
  }

  //
  // One pool block per redraw for the slots and the queue; without it the
  // page shows its background only.
  //
  Layout.Canvas = Canvas;
  Layout.Page = Page;
  Layout.Bottom = 0;
  Layout.Any = FALSE;
  Layout.Slots = (LAYOUT_SLOT *)AllocatePool (Count * (sizeof (LAYOUT_SLOT) + sizeof (UINTN)));
  if (Layout.Slots == nullptr) {
    return;
  }

  Layout.Queue = (UINTN *)&Layout.Slots[Count];
  PlaceAll (&Layout);
  DrawAll (Canvas, &Layout, Background, Foreground);
  FreePool (Layout.Slots);
}
