// JSON dump of the pane tree and pane lookups for the script's expectations.
#include "PLHostPaneDump.h"

#include <cstdio>

#include "PLPane.h"

namespace {

// Length of the valid UTF-8 sequence at `text[i]`, or 0 when it is not one.
size_t ValidSequenceLength(std::string_view text, size_t i) {
    auto byte = [&](size_t k) { return uint8_t(text[k]); };
    uint8_t lead = byte(i);
    size_t length;
    uint32_t minimum;
    if (lead < 0x80) {
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        minimum = 0x10000;
    } else {
        return 0;
    }
    if (i + length > text.size()) {
        return 0;
    }
    uint32_t code = lead & (0x7F >> length);
    for (size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) {
            return 0;
        }
        code = (code << 6) | (byte(i + k) & 0x3F);
    }
    bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return (code < minimum || code > 0x10FFFF || surrogate) ? 0 : length;
}

void Indent(std::string& out, int depth) {
    out.append(size_t(depth) * 2, ' ');
}

}  // namespace

void PLHostPaneDump::AppendString(std::string& out, std::string_view text) {
    out += '"';
    size_t i = 0;
    while (i < text.size()) {
        size_t length = ValidSequenceLength(text, i);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            ++i;
            continue;
        }
        char c = text[i];
        if (length > 1) {
            out.append(text.substr(i, length));
        } else if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c == '\r') {
            out += "\\r";
        } else if (uint8_t(c) < 0x20 || c == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof(escaped), "\\u%04x", unsigned(uint8_t(c)));
            out += escaped;
        } else {
            out += c;
        }
        i += length;
    }
    out += '"';
}

void PLHostPaneDump::AppendPane(std::string& out, const PLPane& pane, bool ancestorsShown,
                                int depth) {
    PLRect rect = pane.GetScreenRect();
    bool visible = ancestorsShown && pane.IsShown();
    Indent(out, depth);
    out += "{\"id\": " + std::to_string(pane.GetID()) + ", \"class\": ";
    AppendString(out, pane.GetClassName() ? pane.GetClassName() : "");
    out += ", \"rect\": [" + std::to_string(rect.top) + ", " + std::to_string(rect.left) + ", " +
           std::to_string(rect.bottom) + ", " + std::to_string(rect.right) + "]";
    out += std::string(", \"shown\": ") + (pane.IsShown() ? "true" : "false");
    out += std::string(", \"visible\": ") + (visible ? "true" : "false");
    out += std::string(", \"enabled\": ") + (pane.IsEnabled() ? "true" : "false");
    out += ", \"text\": ";
    AppendString(out, pane.GetString().view());
    out += ", \"on\": " + std::to_string(pane.GetOnState());
    std::string extra = pane.DumpExtra();
    if (!extra.empty()) {
        out += ", " + extra;
    }
    const auto& children = pane.GetSubPanes();
    if (children.empty()) {
        out += ", \"children\": []}";
        return;
    }
    out += ", \"children\": [\n";
    for (size_t i = 0; i < children.size(); ++i) {
        AppendPane(out, *children[i], visible, depth + 1);
        out += i + 1 < children.size() ? ",\n" : "\n";
    }
    Indent(out, depth);
    out += "]}";
}

std::string PLHostPaneDump::ToJSON(const PLPane* root) {
    if (!root) {
        return "null\n";
    }
    std::string out;
    AppendPane(out, *root, true, 0);
    out += '\n';
    return out;
}

PLPane* PLHostPaneDump::FindVisible(PLPane* root, uint32_t id) {
    if (!root || !root->IsShown()) {
        return nullptr;
    }
    if (root->GetID() == id) {
        return root;
    }
    for (PLPane* child : root->GetSubPanes()) {
        if (PLPane* found = FindVisible(child, id)) {
            return found;
        }
    }
    return nullptr;
}

PLPane* PLHostPaneDump::FindAny(PLPane* root, uint32_t id) {
    return root ? root->FindPane(id) : nullptr;
}
