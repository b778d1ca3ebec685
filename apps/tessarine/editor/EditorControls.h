#pragma once
#include <cstddef>
#include <string>
#include <vector>

namespace App {

/// What a person calls the controls that the keyboard reaches, in the order of the Tab key.
std::vector<std::string> editorControls();

/// Place of a control in that order, by its name in any case.
/// Errors  Failure with the nearest names
size_t findEditorControl(const std::string &name);

} // namespace App
