#include <gtest/gtest.h>
#include <qt/graph_widget_stage.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <cmath>

namespace nodeline::qt {
namespace {

class PictureExport : public GraphWidgetTest {};

int CountInked(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) != qRgb(255, 255, 255);
    }
    return count;
}

TEST_F(PictureExport, APictureIsOfAllOrOfWhatIsVisible) {
    const QTemporaryDir folder;
    QString error = "not asked";
    const QString whole = folder.filePath("whole.png");
    ASSERT_TRUE(widget->exportPicture(whole, false, &error)) << error.toStdString();
    EXPECT_TRUE(error.isEmpty());
    const nodeline::size<double> s = graph->GetRoot().GetSize();
    const QImage image(whole);
    EXPECT_EQ(image.size(),
              QSize(static_cast<int>(std::ceil(s.cx)), static_cast<int>(std::ceil(s.cy))));
    const point<double> p = a.GetPosition();
    const auto inside = image.copy(QRect(QPoint(static_cast<int>(p.x), static_cast<int>(p.y)),
                                         QSize(static_cast<int>(a.GetSize().cx), 20)));
    EXPECT_GT(CountInked(inside), 50);
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
    const QString part = folder.filePath("part.PNG");
    ASSERT_TRUE(widget->exportPicture(part, true));
    const rectangle<int> r = widget->viewer()->GetContent()->GetContentRect();
    EXPECT_EQ(QImage(part).size(), QSize(r.right, r.bottom));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

TEST_F(PictureExport, APictureThatCannotBeWrittenTellsWhy) {
    QString error;
    EXPECT_FALSE(widget->exportPicture("no-such-folder/picture.png", false, &error));
    EXPECT_TRUE(error.startsWith("cannot write no-such-folder/picture.png: "))
        << error.toStdString();
    EXPECT_FALSE(widget->exportPicture("picture.bmp", false, &error));
    EXPECT_EQ(error, "picture.bmp ends in none of .svg, .pdf and .png");
    EXPECT_FALSE(QFile::exists("picture.bmp"));
}

TEST_F(PictureExport, AnSvgIsWrittenWhereThereIsCairoAndElseSaysWhyNot) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("picture.svg");
    QString error;
    const bool is_written = widget->exportPicture(path, false, &error);
#ifdef NODELINE_WITH_CAIRO
    ASSERT_TRUE(is_written) << error.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("second"));
#else
    EXPECT_FALSE(is_written);
    EXPECT_EQ(error, "SVG and PDF pictures need a library that was built with Cairo");
#endif
}

}  // namespace
}  // namespace nodeline::qt
