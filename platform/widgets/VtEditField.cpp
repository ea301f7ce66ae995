// Edit fields: box and caption, the inner editor, press and change messages.
#include "VtEditField.h"

#include <algorithm>

#include "PLDrawContext.h"
#include "PLMessage.h"
#include "VtStateMessage.h"
#include "VtTextEditor.h"
#include "VtTheme.h"

VtEditField::VtEditField(uint32_t id, PLPoint location, PLSize size,
                         const PLBasicString<char>& text, const Options& options)
    : PLControl(id, location, size), mOptions(options), mEditor(nullptr) {
    // An empty caption takes no room: a field given a caption width but no caption keeps its
    // whole box for the text (a ten-character date needs it).
    mOptions.captionWidth =
        mOptions.caption.IsEmpty() ? 0 : std::clamp<long>(mOptions.captionWidth, 0, size.h);
    if (mOptions.justification < 0 || mOptions.justification > 2) {
        mOptions.justification = kPLJustifyLeft;
    }
    const PLRect box = GetBoxRect();
    const int border = mOptions.border == 0 ? 0 : 1;
    PLRect inner{box.top + border + mOptions.margins.top, box.left + border + mOptions.margins.left,
                 box.bottom - border - mOptions.margins.bottom,
                 box.right - border - mOptions.margins.right};
    if (inner.IsEmpty()) {
        inner = box;
    }
    mEditor = new VtTextEditor(0, inner.TopLeft(), inner.Size(), *this);
    mEditor->GetModel().SetMultiLine(!mOptions.singleLine);
    mEditor->GetModel().SetLimit(mOptions.textLimit > 0 ? size_t(mOptions.textLimit) : 0);
    mEditor->SetEditable(mOptions.editable);
    mEditor->GetModel().SetText(text.view());
    AddSubPane(mEditor, false);
    PLPane::SetString(PLBasicString<char>(mEditor->GetText()), false);
}

PLRect VtEditField::GetBoxRect() const {
    PLRect box = GetBounds();
    box.left = std::min(box.right, box.left + int(mOptions.captionWidth));
    return box;
}

void VtEditField::SetString(const PLBasicString<char>& text, bool redraw) {
    mEditor->ReplaceText(text.view());
    PLPane::SetString(PLBasicString<char>(mEditor->GetText()), redraw);
}

void VtEditField::SetEnabled(bool enabled, bool redraw) {
    PLControl::SetEnabled(enabled, redraw);
    if (redraw) {
        mEditor->Redraw();
    }
}

void VtEditField::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    if (mOptions.captionWidth > 0) {
        const long justification =
            mOptions.captionJustification < 0 || mOptions.captionJustification > 2
                ? kPLJustifyLeft
                : mOptions.captionJustification;
        const PLRGBColor color = IsActive() ? theme.TextColor() : theme.DisabledTextColor();
        theme.DrawText(context, mOptions.caption.view(),
                       {0, 0, GetSize().v, int(mOptions.captionWidth)}, color, justification,
                       mOptions.font, 2);
    }
    const bool focused = mEditor->HasIME() || IsPressed();
    theme.DrawFieldBox(context, GetBoxRect(), focused, IsActive(), mOptions.border);
}

void VtEditField::MouseDown(PLPoint where, PLMouseButton) {
    if (IsActive()) {
        mArmed = GetBoxRect().Contains(where);
        SetPressed(mArmed);
    }
}

void VtEditField::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = mArmed && GetBoxRect().Contains(where) && IsActive();
    mArmed = false;
    SetPressed(false);
    if (completed) {
        NotifyPressed();
    }
}

void VtEditField::NotifyPressed() {
    if (!mOptions.notifyPress) {
        return;
    }
    // Both spellings of the press message: listeners written for either one hear it.
    PLMessage pressed(kPLMsgEditPressed, GetID(), 0, kEmptyString, kEmptyString);
    BroadcastMessage(&pressed);
    PLMessage pressedAlt(kPLMsgEditPressedAlt, GetID(), 0, kEmptyString, kEmptyString);
    BroadcastMessage(&pressedAlt);
}

void VtEditField::EditorChanged(bool byUser) {
    PLPane::SetString(PLBasicString<char>(mEditor->GetText()), true);
    if (byUser) {
        VtStateMessage changed(kPLMsgEditChanged, GetID(), kVtEditTextChanged);
        BroadcastMessage(&changed);
    }
}
