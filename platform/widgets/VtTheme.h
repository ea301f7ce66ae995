// The phone's widget theme: one palette and one set of drawing helpers that every widget of the
// library paints with, so that buttons, fields, lists, menus and dialogs look like one product.
//
// InitVantorTheme installs it as the toolkit's current theme (PLThemeManager); widgets find it with
// VtTheme::Current(), which falls back to the default palette when another theme is installed.
#pragma once

#include <string_view>

#include "PLBasicString.h"
#include "PLDrawContext.h"
#include "PLRGBColor.h"
#include "PLRect.h"
#include "PLTheme.h"

class PLFont;
class PLPane;
struct VtAppearance;

// States a themed face can be drawn in.
enum class VtFaceState { Normal, Pressed, Disabled, On };

// Directions of the small arrows on headers, spinners and scroll bars.
enum class VtArrow { Left, Right, Up, Down };

class VtTheme : public PLTheme {
public:
    // Options of InitVantorTheme, kept so that drawing can honour them.
    struct Options {
        PLRGBColor tint{0, 0, 0};  // background tint; black keeps the palette
        long fontScale = 0;        // 0: UC16 for text; 1 or more: UC24
        bool bmpBackgrounds = true;
        bool gradients = true;
        bool roundedCorners = true;
        bool highContrast = false;
    };

    VtTheme() = default;
    explicit VtTheme(const Options& options) : mOptions(options) {}

    // The installed widget theme, or a default one when the current theme is not a VtTheme.
    static const VtTheme& Current();
    const Options& GetOptions() const { return mOptions; }

    // --- the palette
    static constexpr PLRGBColor kGrey{228, 228, 228};
    static constexpr PLRGBColor kOrange{255, 153, 0};
    static constexpr PLRGBColor kBlue{0, 102, 255};
    static constexpr PLRGBColor kRed{204, 0, 0};
    static constexpr PLRGBColor kWhite{255, 255, 255};
    static constexpr PLRGBColor kBlack{0, 0, 0};
    PLRGBColor TextColor() const;
    PLRGBColor DisabledTextColor() const;
    PLRGBColor BarTop() const;  // dark bottom-bar buttons, top of the gradient
    PLRGBColor BarBottom() const;
    PLRGBColor BandTop() const;  // blue title bands, top of the gradient
    PLRGBColor BandBottom() const;
    PLRGBColor BorderColor() const;
    PLRGBColor FieldColor() const;      // inside of fields, lists, menus and dialogs
    PLRGBColor HighlightColor() const;  // light tint of checked or chosen rows

    // --- PLTheme
    void DrawBmpBackground(PLDrawContext& context, const PLPane& pane) const override;
    void DrawViewBackground(PLDrawContext& context, const PLPane& pane) const override;
    PLRGBColor GetTextColor() const override { return TextColor(); }
    PLRGBColor GetBackgroundColor() const override { return {240, 241, 243}; }

    // --- fonts
    PLFont* TextFont() const;   // "UC16" (or "UC24" with a font scale)
    PLFont* LargeFont() const;  // "UC24"
    // The appearance's font, else the theme's text font.
    PLFont* FontFor(const VtAppearance* appearance) const;
    // `color` unless it is the default marker, else `fallback`.
    static PLRGBColor Resolve(const PLRGBColor& color, const PLRGBColor& fallback);

    // --- drawing helpers (local coordinates of the context)
    void FillGradient(PLDrawContext& context, const PLRect& rect, PLRGBColor top,
                      PLRGBColor bottom) const;
    // A filled rectangle with a one-pixel border whose corner pixels are left out.
    void DrawFace(PLDrawContext& context, const PLRect& rect, PLRGBColor top, PLRGBColor bottom,
                  PLRGBColor border) const;
    // A dark bar button (bottom bars, dialog buttons).
    void DrawBarButton(PLDrawContext& context, const PLRect& rect, VtFaceState state) const;
    // A light button (general buttons, toggles).
    void DrawLightButton(PLDrawContext& context, const PLRect& rect, VtFaceState state) const;
    // The blue band of top bars, date headers and dialog titles.
    void DrawBand(PLDrawContext& context, const PLRect& rect) const;
    void DrawFieldBox(PLDrawContext& context, const PLRect& rect, bool focused, bool enabled,
                      long border) const;
    void DrawCheckBox(PLDrawContext& context, const PLRect& box, bool checked, bool pressed,
                      bool enabled) const;
    void DrawRadio(PLDrawContext& context, const PLRect& box, bool on, bool pressed,
                   bool enabled) const;
    void DrawArrow(PLDrawContext& context, const PLRect& rect, VtArrow direction,
                   PLRGBColor color) const;
    // A two-pixel orange frame inside `rect`: the keyboard focus and the selection.
    void DrawFocusFrame(PLDrawContext& context, const PLRect& rect) const;
    // One line of text; justification as PLDrawContext (0 centre, 1 left, 2 right).
    void DrawText(PLDrawContext& context, std::string_view text, const PLRect& rect,
                  PLRGBColor color, long justification, PLFont* font, int inset = 4) const;

private:
    Options mOptions;
};

// Installs the widget theme (owned by the toolkit's theme manager from then on).
// - `tint`: a colour mixed into the bitmap backgrounds; black (the default-constructed colour)
//   keeps the palette as it is.
// - `fontScale`: 0 draws control texts with the 16-pixel font, 1 or more with the 24-pixel one.
// - `bmpBackgrounds`: paints the theme's background behind panes that ask for one; false leaves
//   them to their parents.
// - `gradients`: bars, bands and buttons shaded top to bottom; false paints them flat.
// - `roundedCorners`: faces with their corner pixels cut; false gives square corners.
// - `highContrast`: black borders and pure black text.
// It also registers the platform's texts ("/usr/share/platform/platform.rsc") with the application
// context, once per context; a missing file is reported on standard error and the widgets keep
// their fallback texts.
void InitVantorTheme(const PLRGBColor& tint, long fontScale, bool bmpBackgrounds, bool gradients,
                     bool roundedCorners, bool highContrast);
