// The pane tree as JSON, so that tests can assert on structure and not only on pixels; and the
// lookups that the script's expectations use.
//
// One object per pane: {"id", "class", "rect": [top, left, bottom, right] on the screen, "shown"
// (the pane's own flag), "visible" (it and every ancestor shown), "enabled", "text", "on", the
// pane's DumpExtra() members, "children": [...]}.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class PLPane;

class PLHostPaneDump {
public:
    // The tree under `root` (null gives "null"), indented two spaces a level.
    static std::string ToJSON(const PLPane* root);
    // Appends `text` as a JSON string literal; invalid UTF-8 becomes U+FFFD.
    static void AppendString(std::string& out, std::string_view text);
    // The first pane with `id` under `root` (depth first, z-order) that is visible: shown, with
    // every ancestor shown. Null when there is none.
    static PLPane* FindVisible(PLPane* root, uint32_t id);
    // The first pane with `id` under `root`, visible or not.
    static PLPane* FindAny(PLPane* root, uint32_t id);

private:
    static void AppendPane(std::string& out, const PLPane& pane, bool ancestorsShown, int depth);
};
