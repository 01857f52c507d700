// Files that are either written as a whole or not at all.
#pragma once

#include <corvex/export.h>

#include <string>
#include <string_view>

namespace corvex {

// Makes `bytes` the content of the file `path`, in one step: they go to a temporary file in the
// same folder, which then takes the place of the former file and keeps its permissions. A symbolic
// link stays, and what it points to is replaced. What is no regular file, a pipe or a terminal, is
// written to as it is.
//
// On failure answers false, leaves the former file as it was and nothing beside it, and says why in
// `error`, which may be null: "cannot write PATH: reason".
NODELINE_API bool WriteFile(const std::string& path, std::string_view bytes, std::string* error);

}  // namespace corvex
