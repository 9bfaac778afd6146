#pragma once

#include <string>

namespace reader {

/// The content of the file that is read. Parsers open files by name: in a program with this source every name opens it.
std::string &input();

} // namespace reader
