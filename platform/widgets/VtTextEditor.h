// The inner editor of an edit field: holds the text model, draws the text (wrapped when
// multi-line) with a caret while the input method writes into it, and reports every change to its
// field. It takes no pen events itself: the field around it does.
#pragma once

#include <string_view>

#include "PLPane.h"
#include "VtTextModel.h"

class IMEManager;
class VtEditField;
class VtScrollContainer;

class VtTextEditor : public PLPane {
public:
    VtTextEditor(uint32_t id, PLPoint location, PLSize size, VtEditField& field);
    ~VtTextEditor() override;

    VtTextModel& GetModel() { return mModel; }
    const VtTextModel& GetModel() const { return mModel; }
    const std::string& GetText() const { return mModel.GetText(); }

    // Characters accepted from typing, e.g. "0123456789"; empty accepts all.
    void SetAcceptedChars(std::string_view chars) { mModel.SetAcceptedChars(chars); }
    void SetTextLimit(size_t bytes);
    // A non-editable editor ignores typing (its field still reports presses).
    void SetEditable(bool editable) { mEditable = editable; }
    bool IsEditable() const { return mEditable; }
    // The scroll container that keeps this editor's caret in view (not owned).
    void SetScroller(VtScrollContainer* scroller) { mScroller = scroller; }
    VtScrollContainer* GetScroller() const { return mScroller; }

    // Typed input ("\b" erases); returns true when the text changed.
    bool TypeText(std::string_view input);
    // Replaces the text from the program; returns true when it changed.
    bool ReplaceText(std::string_view text);

    // The input method attaches itself while it writes here.
    void AttachIME(IMEManager* manager);
    void DetachIME(IMEManager* manager);
    bool HasIME() const { return mIME != nullptr; }
    // Asks the scroller (set, or the nearest enclosing one) to bring the editor into view.
    void RevealCaret();

    void Draw(PLDrawContext& context) override;
    bool HitTest(PLPoint) const override { return false; }
    const char* GetClassName() const override { return "VtTextEditor"; }

private:
    void Changed();

    VtEditField& mField;
    VtTextModel mModel;
    bool mEditable = true;
    VtScrollContainer* mScroller = nullptr;
    IMEManager* mIME = nullptr;
};
