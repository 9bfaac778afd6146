// Texts that should be documents: read, written and read again they stay the same; a text that is none is refused.

#include "host/records/BSONObj.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    try {
        const bson::BSONObj document = bson::BSONObj::fromJson(text);
        const std::string written = document.jsonString();
        if (bson::BSONObj::fromJson(written).jsonString() != written) {
            std::abort();
        }
    } catch (const bson::BSONError &) {
        // no document
    }
    return 0;
}
