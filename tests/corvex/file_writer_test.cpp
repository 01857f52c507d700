#include <gtest/gtest.h>

#include <corvex/file_writer.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

using corvex::WriteFile;

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A folder of its own for each test.
class FileWriter : public testing::Test {
public:
    FileWriter()
        : folder_(fs::path(testing::TempDir()) /
                  ("nodeline-files-" + std::to_string(::getpid()) + "-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name())) {
        fs::create_directory(folder_);
    }
    ~FileWriter() override { fs::remove_all(folder_); }

protected:
    [[nodiscard]] std::string Path(const char* name) const { return folder_ / name; }

    [[nodiscard]] long CountFiles() const {
        return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    }

    fs::path folder_;
};

// While it lives, files cannot grow beyond `bytes`.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};

}  // namespace

TEST_F(FileWriter, WritesANewFileAndNothingBeside) {
    const std::string bytes("a\0b\xFF\n", 5);
    EXPECT_TRUE(WriteFile(Path("new"), bytes, nullptr));
    EXPECT_EQ(ReadAll(Path("new")), bytes);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWriter, ANewFileHasTheUsualPermissions) {
    const mode_t former = ::umask(027);
    EXPECT_TRUE(WriteFile(Path("new"), "x", nullptr));
    ::umask(former);
    struct stat status {};
    ASSERT_EQ(::stat(Path("new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(FileWriter, ReplacesAFileAndKeepsItsPermissions) {
    std::ofstream(Path("old")) << "a longer content than the new one";
    ASSERT_EQ(::chmod(Path("old").c_str(), 0604), 0);
    std::string error;
    EXPECT_TRUE(WriteFile(Path("old"), "new", &error));
    EXPECT_EQ(ReadAll(Path("old")), "new");
    EXPECT_EQ(error, "");
    EXPECT_EQ(CountFiles(), 1);
    struct stat status {};
    ASSERT_EQ(::stat(Path("old").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0604U);
}

TEST_F(FileWriter, ASymbolicLinkStays) {
    std::ofstream(Path("file")) << "old";
    fs::create_symlink("file", Path("link"));
    EXPECT_TRUE(WriteFile(Path("link"), "new", nullptr));
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(ReadAll(Path("file")), "new");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(FileWriter, SaysThatTheFolderIsMissing) {
    std::string error;
    const std::string path = Path("missing/file");
    EXPECT_FALSE(WriteFile(path, "x", &error));
    EXPECT_EQ(error, "cannot write " + path + ": No such file or directory");
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(FileWriter, DoesNotReplaceAFolder) {
    fs::create_directory(Path("folder"));
    std::string error;
    EXPECT_FALSE(WriteFile(Path("folder"), "x", &error));
    EXPECT_EQ(error, "cannot write " + Path("folder") + ": Is a directory");
    EXPECT_TRUE(fs::is_directory(Path("folder")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWriter, AWriteThatBreaksOffLeavesTheFolderAsItWas) {
    std::ofstream(Path("old")) << "old";
    std::string error;
    bool new_done = true;
    bool old_done = true;
    {
        const FileSizeLimit limit(1000);
        new_done = WriteFile(Path("new"), std::string(5000, 'x'), &error);
        old_done = WriteFile(Path("old"), std::string(5000, 'x'), nullptr);
    }
    EXPECT_FALSE(new_done);
    EXPECT_FALSE(old_done);
    EXPECT_EQ(error, "cannot write " + Path("new") + ": File too large");
    EXPECT_FALSE(fs::exists(Path("new")));
    EXPECT_EQ(ReadAll(Path("old")), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWriter, WritesToWhatIsNoRegularFileAsItIs) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = ReadAll(Path("pipe")); });
    const bool done = WriteFile(Path("pipe"), "through the pipe", nullptr);
    reader.join();
    EXPECT_TRUE(done);
    EXPECT_EQ(read, "through the pipe");
    EXPECT_TRUE(fs::is_fifo(Path("pipe")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWriter, SaysThatADeviceIsFull) {
    std::string error;
    EXPECT_FALSE(WriteFile("/dev/full", "x", &error));
    EXPECT_EQ(error, "cannot write /dev/full: No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(FileWriter, ATemporaryFileThatWasLeftBehindIsNotTouched) {
    const std::string left = Path("new") + "." + std::to_string(::getpid()) + "-0.tmp";
    std::ofstream(left) << "left";
    EXPECT_TRUE(WriteFile(Path("new"), "new", nullptr));
    EXPECT_EQ(ReadAll(left), "left");
    EXPECT_EQ(ReadAll(Path("new")), "new");
    EXPECT_EQ(CountFiles(), 2);
}
