// Inner editors: the text and caret of an edit field, typing and the input method's attachment.
#include "VtTextEditor.h"

#include <algorithm>

#include "IMEManager.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "VtEditField.h"
#include "VtScrollContainer.h"
#include "VtTextLayout.h"
#include "VtTheme.h"

VtTextEditor::VtTextEditor(uint32_t id, PLPoint location, PLSize size, VtEditField& field)
    : PLPane(id, location, size), mField(field) {}

VtTextEditor::~VtTextEditor() {
    if (mIME != nullptr) {
        mIME->EditorGone(this);
    }
}

void VtTextEditor::SetTextLimit(size_t bytes) {
    const std::string before = mModel.GetText();
    mModel.SetLimit(bytes);
    if (before != mModel.GetText()) {
        Redraw();
        mField.EditorChanged(false);
    }
}

bool VtTextEditor::TypeText(std::string_view input) {
    if (!mEditable || !mField.IsActive()) {
        return false;
    }
    const std::string before = mModel.GetText();
    const size_t caret = mModel.GetCaret();
    if (!mModel.Type(input)) {
        return false;
    }
    const long maxLines = mField.GetOptions().maxLines;
    if (maxLines > 0 &&
        std::count(mModel.GetText().begin(), mModel.GetText().end(), '\n') >= maxLines) {
        // More lines than the field keeps: the input is refused whole.
        mModel.SetText(before);
        mModel.SetCaret(caret);
        return false;
    }
    Changed();
    return true;
}

bool VtTextEditor::ReplaceText(std::string_view text) {
    if (!mModel.SetText(text)) {
        return false;
    }
    Redraw();
    mField.EditorChanged(false);
    return true;
}

void VtTextEditor::Changed() {
    Redraw();
    mField.EditorChanged(true);
    RevealCaret();
}

void VtTextEditor::AttachIME(IMEManager* manager) {
    mIME = manager;
    mField.Redraw();
    RevealCaret();
}

void VtTextEditor::DetachIME(IMEManager* manager) {
    if (mIME == manager) {
        mIME = nullptr;
        mField.Redraw();
    }
}

void VtTextEditor::RevealCaret() {
    VtScrollContainer* scroller = mScroller;
    if (scroller == nullptr) {
        for (PLPane* pane = GetParent(); pane != nullptr; pane = pane->GetParent()) {
            if (auto* container = dynamic_cast<VtScrollContainer*>(pane)) {
                if (container->IsAutoScroll()) {
                    scroller = container;
                }
                break;
            }
        }
    }
    if (scroller != nullptr && IsDescendantOf(scroller)) {
        scroller->EnsureVisible(mField);
    }
}

void VtTextEditor::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const VtEditField::Options& options = mField.GetOptions();
    PLFont* font = options.font != nullptr ? options.font : theme.TextFont();
    PLRGBColor color =
        options.textColor < 0 ? theme.TextColor() : PLRGBColor(options.textColor, false);
    if (!mField.IsActive()) {
        color = theme.DisabledTextColor();
    }
    const std::string& text = mModel.GetText();
    const bool editing = mIME != nullptr;
    const int width = GetSize().h;
    context.SetTextColor(color);
    context.SetFont(font);
    if (mModel.IsMultiLine() || !mField.IsSingleLine()) {
        const int lineHeight = font->GetLineHeight() + 1;
        const auto lines = VtTextLayout::Wrap(text, width - 2, *font);
        const int fit = std::max(1, GetSize().v / std::max(1, lineHeight));
        // While typing, the last lines (where the caret is) stay in view.
        const size_t first = editing && int(lines.size()) > fit ? lines.size() - size_t(fit) : 0;
        int top = 0;
        for (size_t i = first; i < lines.size() && top < GetSize().v; ++i) {
            const std::string_view piece =
                std::string_view(text).substr(lines[i].start, lines[i].length);
            context.DrawString(piece, {top, 0, top + lineHeight, width}, PLPoint(0, 0), 0, true,
                               options.justification);
            top += lineHeight;
        }
        if (editing && !lines.empty()) {
            const auto& last = lines.back();
            const int x =
                std::min(width - 1,
                         font->MeasureText(std::string_view(text).substr(last.start, last.length)));
            const int lineTop = std::min(top, GetSize().v) - lineHeight;
            context.FillRect(
                {std::max(0, lineTop + 2), x, std::max(0, lineTop + lineHeight - 1), x + 1},
                VtTheme::kBlue);
        }
        return;
    }
    std::string_view shown = text;
    long justification = options.justification;
    if (editing) {
        // The end of a long text stays visible while it is typed.
        while (!shown.empty() && font->MeasureText(shown) > width - 2) {
            shown.remove_prefix(VtTextModel::CharLength(shown, 0));
        }
        justification = shown.size() < text.size() ? kPLJustifyLeft : justification;
    }
    context.DrawString(shown, GetBounds(), PLPoint(0, 0), 0, true, justification);
    if (editing) {
        const int textWidth = font->MeasureText(shown);
        int x = textWidth;
        if (justification == kPLJustifyCenter) {
            x = (width + textWidth) / 2;
        } else if (justification == kPLJustifyRight) {
            x = width - 1;
        }
        x = std::clamp(x, 0, width - 1);
        const int h = font->GetLineHeight();
        const int top = std::max(0, (GetSize().v - h) / 2);
        context.FillRect({top, x, std::min(GetSize().v, top + h), x + 1}, VtTheme::kBlue);
    }
}
