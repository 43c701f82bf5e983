// The device tree and the selected model.
#pragma once

#include "form/main_form.h"

#include <string_view>

namespace vrk {

void build_device_tree(MainForm& form); // once, at start; the language of that moment decides which families appear

void open_device_tree(MainForm& form);
void close_device_tree(MainForm& form);

// A click on a node. Family nodes only open and close; a model becomes the selected one, with empty buffers.
void TreeViewDevice_NodeClick(MainForm& form, std::string_view key);

// Makes the text of txtDevice the selected model: record, ranges, tabs. False: no such model; the box has said so.
bool apply_selected_device(MainForm& form);

// Takes the stored model, or Hazel-1 where the tree has no such node.
void restore_device(MainForm& form);

void show_ap_isp_range(MainForm& form);

} // namespace vrk
