// Theme files: any content. What is read is complete, and what is refused is said why.

#include "toolkit/theme/ThemePicture.h"
#include "toolkit/theme/ThemeTable.h"

#include <sanitizer/lsan_interface.h>

#include <cstdint>
#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    GZ::ThemeTable table;
    QString error;
    bool isRead = false;
    {
        const __lsan::ScopedDisabler leaksOfQt; // its JSON reader loses what a key has that comes twice
        isRead = table.read(content, &error);
    }
    check(isRead == error.isEmpty());
    if (!isRead) {
        return 0;
    }
    for (const QColor &color : qAsConst(table.mColors)) {
        check(color.isValid());
    }
    for (const GZ::ThemeFont &font : qAsConst(table.mFonts)) {
        check(!font.mFamilies.isEmpty() && font.mPixelSize >= 1 && font.mPixelSize <= 200);
        check(font.mWeight >= 1 && font.mWeight <= 99);
    }
    for (const GZ::ThemeImage &image : qAsConst(table.mImages)) {
        check(!image.mNormal.isNull() && image.mDouble.size() == image.mNormal.size() * 2);
    }
    return 0;
}
