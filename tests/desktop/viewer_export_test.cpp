// Pictures that the desktop program writes.
#include <desktop/viewer_fixture.h>

#include <QFile>
#include <QXmlStreamReader>

namespace nodeline::test {
namespace {

class ViewerExportTest : public ViewerTest {
protected:
    void SetUp() override {
        ViewerTest::SetUp();
        if (HasFatalFailure()) return;
        Write("fork.txt", kFork);
        Show("fork.txt");
    }

    // By the dialog that `keys` open; answers the path of the picture.
    QString Export(const QString& keys, const QString& name) {
        const QString path = PathOf(name);
        Press({keys});
        TakeWindow("Export");
        Press({"ctrl+a"});
        Type(path);
        Press({"Return"});
        EXPECT_TRUE(Says("Exported " + path));
        return path;
    }

    static QByteArray Read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(ViewerExportTest, AnSvgIsWellFormedAndHoldsTheCaptionsAsText) {
    QXmlStreamReader svg(Read(Export("ctrl+e", "all.svg")));
    QStringList names;
    QString text;
    while (!svg.atEnd()) {
        svg.readNext();
        if (svg.isStartElement()) names << svg.name().toString();
        if (svg.isCharacters()) text += svg.text();
    }
    EXPECT_FALSE(svg.hasError()) << svg.errorString().toStdString();
    ASSERT_FALSE(names.isEmpty());
    EXPECT_EQ(names.front(), "svg");
    for (const char* caption : {"alpha", "beta", "gamma", "delta"}) {
        EXPECT_TRUE(text.contains(caption)) << caption;
    }
}

TEST_F(ViewerExportTest, APngOfEverythingDoesNotDependOnTheView) {
    const QImage before(Export("ctrl+e", "before.png"));
    ASSERT_FALSE(before.isNull());
    EXPECT_EQ(FindPlaces(before.convertToFormat(QImage::Format_RGB32), kNode | 0xff000000U).size(),
              4U);
    TakeWindow("fork.txt");
    Press({"ctrl+plus"});
    ASSERT_TRUE(Says("125 %"));
    EXPECT_EQ(QImage(Export("ctrl+e", "after.png")), before);
}

TEST_F(ViewerExportTest, APngOfTheVisiblePartIsAsLargeAsTheView) {
    const QImage picture(Export("ctrl+shift+e", "part.png"));
    EXPECT_GT(picture.width(), 900);
    EXPECT_GT(picture.height(), 700);
}

TEST_F(ViewerExportTest, APdfIsOne) {
    EXPECT_TRUE(Read(Export("ctrl+e", "all.pdf")).startsWith("%PDF-"));
}

}  // namespace
}  // namespace nodeline::test
