#pragma once

#include <QImage>
#include <QPainter>

#include <optional>
#include <utility>

namespace TC {

/// An image with a painter that stays open from one drawing to the next: to begin one takes longer than to draw a few lines.
///
/// The painter keeps its pen, brush and font; whoever sets anything else sets it back. Nobody else paints in the image, nor
/// keeps a copy of it.
class OpenImage {
public:
    OpenImage() = default;
    OpenImage(const OpenImage &) = delete;
    OpenImage &operator=(const OpenImage &) = delete;

    const QImage &image() const { return mImage; }
    void set(QImage image) {
        mPainter.reset(); // one that is used again would keep its transformation
        mImage = std::move(image);
    }
    void fill(const QColor &color) { mImage.fill(color); }
    /// Null when it cannot be painted in.
    QPainter *painter() {
        if (!mPainter) {
            mPainter.emplace(&mImage);
        }
        return mPainter->isActive() ? &*mPainter : nullptr;
    }

private:
    QImage mImage;
    std::optional<QPainter> mPainter; ///< of the image, so that it goes first
};

} // namespace TC
