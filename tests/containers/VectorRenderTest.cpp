// A view as print, PDF and SVG get it: lines, shapes and texts.

#include "tests/containers/CursorFixture.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QTemporaryDir>

namespace tests {
namespace {

/// Notes what it is told to draw.
class NotingEngine : public QPaintEngine {
public:
    NotingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    Type type() const override { return QPaintEngine::User; }
    void drawPixmap(const QRectF &rect, const QPixmap &, const QRectF &) override { mImages.append(rect); }
    void drawTiledPixmap(const QRectF &rect, const QPixmap &, const QPointF &) override {
        mImages.append(rect);
    }
    void drawImage(const QRectF &rect, const QImage &, const QRectF &, Qt::ImageConversionFlags) override {
        mImages.append(rect);
    }
    void drawPath(const QPainterPath &) override { ++mShapes; }
    void drawPolygon(const QPointF *, int points, PolygonDrawMode) override {
        ++mShapes;
        mLongest = qMax(mLongest, points);
    }
    void drawRects(const QRectF *, int) override { ++mShapes; }
    void drawLines(const QLineF *, int count) override { mLines += count; }
    void drawTextItem(const QPointF &, const QTextItem &) override { ++mTexts; }

    QList<QRectF> mImages;
    int mShapes = 0;
    int mLines = 0;
    int mTexts = 0;
    int mLongest = 0; ///< points of a polygon
};

class NotingDevice : public QPaintDevice {
public:
    explicit NotingDevice(const QSize &size) : mSize(size) {}
    QPaintEngine *paintEngine() const override { return &mEngine; }
    mutable NotingEngine mEngine;

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
            return mSize.width();
        case PdmHeight:
            return mSize.height();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 96;
        }
    }

private:
    const QSize mSize;
};

class VectorRender : public CursorFixture {
protected:
    QImage rendered(const QSize &size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        mMain->renderTo(&painter, QRect(QPoint(0, 0), size));
        return image;
    }
    /// Share of the pixels that differ in any channel by more than a shade.
    static double difference(const QImage &a, const QImage &b) {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                const QRgb one = a.pixel(x, y);
                const QRgb other = b.pixel(x, y);
                count += qAbs(qRed(one) - qRed(other)) > 32 || qAbs(qGreen(one) - qGreen(other)) > 32 ||
                                 qAbs(qBlue(one) - qBlue(other)) > 32
                             ? 1
                             : 0;
            }
        }
        return double(count) / (a.width() * a.height());
    }
};

TEST_F(VectorRender, NothingButToolsOfTheTitleIsAnImage) {
    showTrading(1);
    mMain->scaleView(false);
    fill();
    mMain->moveToEnd();
    NotingDevice device(mMain->size());
    QPainter painter(&device);
    mMain->renderTo(&painter, mMain->rect());
    painter.end();
    for (const QRectF &image : device.mEngine.mImages) {
        EXPECT_LE(image.width(), 24.0) << image.x() << ", " << image.y();
        EXPECT_LE(image.height(), 24.0);
    }
    EXPECT_GT(device.mEngine.mLongest, 100) << "the area beneath the prices";
    EXPECT_GT(device.mEngine.mShapes + device.mEngine.mLines, 300);
}

TEST_F(VectorRender, ItShowsWhatTheScreenShows) {
    showTrading(1);
    const QImage screen = mMain->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QImage vectors = rendered(mMain->size());
    const double different = difference(vectors, screen);
    EXPECT_LT(different, 0.02);
    if (HasFailure()) {
        screen.save(TIMESHARE_BINARY_DIR "/vectors-expected.png");
        vectors.save(TIMESHARE_BINARY_DIR "/vectors-actual.png");
    }
    QImage empty(mMain->size(), QImage::Format_RGB32);
    empty.fill(Qt::black);
    EXPECT_GT(difference(empty, screen), 0.04) << "the measure can tell";
}

TEST_F(VectorRender, TradesAreShapesToo) {
    mHost.mLinkage.mEnabled = true;
    const auto order = boost::make_shared<kvservice::COrderDetail>();
    order->mOrderKey = "1";
    order->mPrice = 10.1;
    order->mDirection = 48;
    order->mTime = "10:00:00";
    mHost.mLinkage.mOrders["SH600000"]["A"]["1"] = order;
    showTrading();
    const QImage without = rendered(mMain->size());
    mUi->mLinkageFlags = 2;
    mUi->mLinkageAccounts = {"A"};
    mUi->mStockAccounts = {"A"};
    mMain->updateLinkageDatas();
    settle();
    const QImage with = rendered(mMain->size());
    EXPECT_NE(with, without);
    NotingDevice device(mMain->size());
    QPainter painter(&device);
    mMain->renderTo(&painter, mMain->rect());
    painter.end();
    for (const QRectF &image : device.mEngine.mImages) {
        EXPECT_LE(image.width(), 24.0);
    }
}

TEST_F(VectorRender, ItIsStretchedToTheRectangle) {
    showTrading();
    QImage image(1400, 900, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    mMain->renderTo(&painter, QRect(100, 50, 1200, 800));
    painter.end();
    EXPECT_EQ(image.pixelColor(99, 400), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(1300, 400), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(600, 49), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(600, 850), QColor(Qt::green));
    EXPECT_NE(image.pixelColor(101, 51), QColor(Qt::green));
    EXPECT_NE(image.pixelColor(1298, 848), QColor(Qt::green));
}

TEST_F(VectorRender, APdfHoldsIt) {
    showTrading();
    const QTemporaryDir folder;
    const QString file = folder.filePath("view.pdf");
    QPdfWriter writer(file);
    writer.setResolution(96);
    QPainter painter(&writer);
    mMain->renderTo(&painter, QRect(0, 0, 700, 400));
    painter.end();
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray pdf = written.readAll();
    EXPECT_GT(pdf.size(), 5000);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
}

TEST_F(VectorRender, NothingIsDrawnWhereThereIsNowhereTo) {
    showTrading();
    mMain->renderTo(nullptr, QRect(0, 0, 10, 10));
    QPainter idle;
    mMain->renderTo(&idle, QRect(0, 0, 10, 10));
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    mMain->renderTo(&painter, QRect(0, 0, 0, 10));
    painter.end();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::green));
}

} // namespace
} // namespace tests
