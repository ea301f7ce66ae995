// An edit field: a box (with an optional caption at its left) around an inner editor.
//
// - Pressing the field sends "emup" and then "pume" to its listeners (sender = the field's id):
//   listeners react to the one they know; the field itself opens nothing. The input method (or a
//   picker) is opened by the listener.
// - Every change of the text by typing sends "MEMI" (a VtStateMessage, state
//   kVtEditTextChanged = 3); text set by the program sends nothing.
// - GetString() is the text; SetString() replaces it (cut to the limit at a character boundary).
#pragma once

#include "PLControl.h"
#include "PLRect.h"

class PLFont;
class VtTextEditor;

// Text insets inside the box (top, left, bottom, right): the standard edit-field rectangle.
inline constexpr PLRect kVtEditFieldRect{4, 5, 4, 5};

class VtEditField : public PLControl {
public:
    struct Options {
        bool singleLine = true;
        long border = -1;                // -1 theme border, 0 none, 1..3 pixels
        long maxLines = 0;               // multi-line fields: 0 as many as the height holds
        long justification = 1;          // 0 centre, 1 left, 2 right
        long textLimit = 0;              // bytes, 0 no limit
        PLBasicString<char> caption;     // shown at the left of the box
        long captionJustification = -1;  // -1 the theme's (left), else 0, 1, 2
        long captionWidth = 0;           // pixels given to the caption
        PLFont* font = nullptr;          // null: the theme's font
        bool editable = true;
        PLRect margins = kVtEditFieldRect;
        long textColor = -1;      // 0xRRGGBB, -1 the theme's
        bool notifyPress = true;  // send "emup"/"pume" when pressed
    };

    VtEditField(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                const Options& options);

    VtTextEditor* GetEditor() const { return mEditor; }
    const Options& GetOptions() const { return mOptions; }
    bool IsSingleLine() const { return mOptions.singleLine; }
    // The box (without the caption) in field coordinates.
    PLRect GetBoxRect() const;

    void SetString(const PLBasicString<char>& text, bool redraw = true) override;
    void SetEnabled(bool enabled, bool redraw = true) override;

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtEditField"; }

    // Sends the press messages as a tap does.
    void NotifyPressed();
    // Called by the inner editor after its text changed: keeps GetString() in step and, for
    // the user's typing, sends "MEMI" (text set by the program is not reported).
    void EditorChanged(bool byUser);

private:
    Options mOptions;
    VtTextEditor* mEditor;  // a sub-pane, owned as such
    bool mArmed = false;    // the pen went down on the box
};
