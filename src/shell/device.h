// The device tree and the selected model.
#pragma once

#include "shell/shell.h"

#include <string_view>

namespace vrk {

void build_device_tree(Shell& shell); // once, at start; the language of that moment decides which families appear

void open_device_tree(Shell& shell);
void close_device_tree(Shell& shell);
void toggle_device_tree(Shell& shell);

// A click on a node. Family nodes only open and close; a model becomes the selected one, with empty buffers, also one
// that the tree of this language does not offer.
void TreeViewDevice_NodeClick(Shell& shell, std::string_view key);

// Makes the text of txtDevice the selected model: record, ranges, tabs. False: no such model; the box has said so.
bool apply_selected_device(Shell& shell);

// Takes the stored model, or Hazel-1 where the tree has no such node.
void restore_device(Shell& shell);

void show_ap_isp_range(Shell& shell);

} // namespace vrk
