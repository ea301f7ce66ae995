// The device root (path mapping, default, directory creation) and files opened through it.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "PLDeviceRoot.h"
#include "PLFile.h"
#include "toolkit_support.h"

namespace {

TEST(PLDeviceRootTest, ResolveStaysInsideTheRoot) {
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"plain", "/r", "/root/resource/calendar.rsc", "/r/root/resource/calendar.rsc"},
        {"folder keeps its slash", "/r", "/tmp/", "/r/tmp/"},
        {"root slash stripped", "/r/", "/var/log/messages.jsonl", "/r/var/log/messages.jsonl"},
        {"identity without root", "", "/usr/share", "/usr/share"},
        {"slash root is identity", "/", "/usr/share", "/usr/share"},
        {"relative unchanged", "/r", "data/x", "data/x"},
        {"dot and double slash", "/r", "/a/./b//c", "/r/a/b/c"},
        {"inner dotdot", "/r", "/a/b/../c", "/r/a/c"},
        {"escape at top", "/r", "/../etc/passwd", "/r/etc/passwd"},
        {"deep escape", "/r", "/a/../../../../etc", "/r/etc"},
        {"only dotdot", "/r", "/..", "/r/"},
        {"the root itself", "/r", "/", "/r/"},
    };
    for (const auto& [name, rootPath, path, resolved] : rows) {
        SCOPED_TRACE(name);
        PLDeviceRoot::SetRoot(rootPath);
        EXPECT_EQ(PLDeviceRoot::Resolve(path), resolved);
    }
    PLDeviceRoot::SetRoot("");
}

TEST(PLDeviceRootTest, DefaultRootFromEnvironment) {
    struct Row {
        const char *name, *xdg, *root;  // xdg null: unset
    };
    const std::string local = "/home/u/.local/share/calendar-sim/device";
    const Row rows[] = {
        {"xdg data home", "/data", "/data/calendar-sim/device"},
        {"xdg with slash", "/data/", "/data/calendar-sim/device"},
        {"no xdg", nullptr, local.c_str()},
        {"empty xdg", "", local.c_str()},
        {"relative xdg ignored", "rel", local.c_str()},
    };
    ScopedEnv home("HOME", "/home/u");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScopedEnv xdg("XDG_DATA_HOME", row.xdg);
        EXPECT_EQ(PLDeviceRoot::DefaultRoot(), row.root);
    }
}

TEST(PLFileTest, DirectoriesOpenResultsAndContentsUnderTheRoot) {
    ScratchRoot root;
    ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories("/tmp/sub/file"));
    EXPECT_TRUE(std::filesystem::is_directory(root.Path() + "/tmp/sub"));
    EXPECT_FALSE(std::filesystem::exists(root.Path() + "/tmp/sub/file"));
    WriteBytes(root.Path() + "/tmp/present.txt", {'h', 'i'});
    WriteBytes(root.Path() + "/tmp/locked.txt", {'s'});
    chmod((root.Path() + "/tmp/locked.txt").c_str(), 0);
    // A file where a directory should be: a clear failure.
    EXPECT_FALSE(PLDeviceRoot::MakeParentDirectories("/tmp/present.txt/inner/file"));

    const bool privileged = geteuid() == 0;  // root ignores permissions
    // clang-format off
    const std::tuple<const char*, const char*, long, long> rows[] = {
        {"existing file", "/tmp/present.txt", PLFile::kRead, PLFile::kOK},
        {"missing file", "/tmp/absent.txt", PLFile::kRead, PLFile::kNotFound},
        {"missing folder", "/nowhere/x.txt", PLFile::kWrite, PLFile::kNotFound},
        {"unreadable", "/tmp/locked.txt", PLFile::kRead, privileged ? PLFile::kOK : PLFile::kAccessDenied},
        {"a directory", "/tmp", PLFile::kRead, PLFile::kError},
        {"unknown mode", "/tmp/present.txt", 7, PLFile::kError},
        {"new file", "/tmp/new.txt", PLFile::kWrite, PLFile::kOK},
    };
    // clang-format on
    for (const auto& [name, path, mode, result] : rows) {
        SCOPED_TRACE(name);
        PLFile file;
        file.SetFilename(path);
        EXPECT_EQ(file.OpenFile(mode, nullptr), result);
        EXPECT_EQ(file.IsOpen(), result == PLFile::kOK);
    }
    EXPECT_TRUE(std::filesystem::exists(root.Path() + "/tmp/new.txt")) << "under the root";
}

}  // namespace
