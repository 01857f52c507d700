#include <apps/viewer/examples.h>
#include <gtest/gtest.h>
#include <nodeline/ops/load.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <sstream>

namespace nodeline::app {
namespace {

TEST(Examples, EachIsInsideTheProgramAndLoads) {
    for (const Example& example : BuiltInExamples()) {
        QFile file(example.path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << example.path.toStdString();
        std::istringstream in(file.readAll().toStdString());
        const graph_ptr2<Graph> graph(new Graph, true);
        LoadError error;
        EXPECT_TRUE(Load(graph, in, &error)) << error.line << ": " << error.reason;
        EXPECT_EQ(error.reason, "");
        EXPECT_GT(graph->GetRoot().GetOwned().GetCount(), 0);
    }
}

TEST(Examples, AllGraphsInTheProgramAreListedOnce) {
    QSet<QString> listed;
    for (const Example& example : BuiltInExamples()) listed.insert(example.path);
    EXPECT_EQ(static_cast<std::size_t>(listed.size()), BuiltInExamples().size());
    for (const QString& name : QDir(":/examples").entryList()) {
        EXPECT_TRUE(listed.contains(":/examples/" + name)) << name.toStdString();
    }
}

TEST(Examples, EachHasATitleAndADescription) {
    ASSERT_FALSE(BuiltInExamples().empty());
    for (const Example& example : BuiltInExamples()) {
        EXPECT_FALSE(example.title.isEmpty());
        EXPECT_FALSE(example.description.isEmpty());
        EXPECT_FALSE(example.description.endsWith('.'));
    }
}

}  // namespace
}  // namespace nodeline::app
