#include "terminal/files/reader/Input.h"

#include "host/Export.h"

#include <cstdio>

namespace reader {

std::string &input() {
    static std::string content;
    return content;
}

} // namespace reader

// Shown, so that the parser's library opens by this one and not by the system's.
extern "C" TIMESHARE_EXPORT FILE *fopen(const char * /*name*/, const char * /*mode*/) {
    std::string &content = reader::input();
    return content.empty() ? nullptr : fmemopen(content.data(), content.size(), "rb");
}
