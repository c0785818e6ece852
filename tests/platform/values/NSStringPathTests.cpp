// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

struct PathCase {
    NSString path;
    NSString result;
};

class LastPathComponent : public testing::TestWithParam<PathCase> {};
TEST_P(LastPathComponent, IsTheNameWithoutSlashes) {
    EXPECT_EQ(GetParam().path.lastPathComponent(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, LastPathComponent,
                         testing::Values(PathCase{"", ""}, PathCase{"/", "/"}, PathCase{"//", "/"},
                                         PathCase{"///", "/"}, PathCase{"a", "a"}, PathCase{"a/", "a"},
                                         PathCase{"/a", "a"}, PathCase{"/a/b//", "b"},
                                         PathCase{"/tmp/scratch.tiff", "scratch.tiff"}, PathCase{"a//b", "b"},
                                         PathCase{"..", ".."}));

class PathExtension : public testing::TestWithParam<PathCase> {};
TEST_P(PathExtension, IsBehindTheLastDot) {
    EXPECT_EQ(GetParam().path.pathExtension(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, PathExtension,
                         testing::Values(PathCase{"", ""}, PathCase{"/", ""}, PathCase{"a", ""}, PathCase{"a.", ""},
                                         PathCase{".jpg", ""}, PathCase{"/.jpg", ""}, PathCase{".", ""},
                                         PathCase{"..", ""}, PathCase{"home/nicola.jpg", "jpg"},
                                         PathCase{"/home/nicola..jpg", "jpg"}, PathCase{"/home/nicola.jpg/", "jpg"},
                                         PathCase{"/home/nicola.jpg//", "jpg"}, PathCase{"/home/nicola.jpg/extra", ""},
                                         PathCase{"/home/nicola./", ""}, PathCase{"a.tar.gz", "gz"},
                                         PathCase{".hidden.txt", "txt"}));

class DeletingLastPathComponent : public testing::TestWithParam<PathCase> {};
TEST_P(DeletingLastPathComponent, LeavesTheFolder) {
    EXPECT_EQ(GetParam().path.stringByDeletingLastPathComponent(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, DeletingLastPathComponent,
                         testing::Values(PathCase{"", ""}, PathCase{"/", "/"}, PathCase{"//", "/"}, PathCase{"a", ""},
                                         PathCase{"a/", ""}, PathCase{"/tmp", "/"}, PathCase{"/tmp/", "/"},
                                         PathCase{"/tmp/lock/", "/tmp"}, PathCase{"/tmp/scratch.tiff", "/tmp"},
                                         PathCase{"scratch.tiff", ""}, PathCase{"foo/bar", "foo"},
                                         PathCase{"//host/share/", "/host"}, PathCase{"a//b//c", "a/b"},
                                         PathCase{"/hello/there/..", "/hello/there"}));

class DeletingPathExtension : public testing::TestWithParam<PathCase> {};
TEST_P(DeletingPathExtension, LeavesTheRest) {
    EXPECT_EQ(GetParam().path.stringByDeletingPathExtension(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, DeletingPathExtension,
                         testing::Values(PathCase{"", ""}, PathCase{"/", "/"}, PathCase{"//", "/"},
                                         PathCase{"/tmp/scratch.tiff", "/tmp/scratch"}, PathCase{"/tmp/", "/tmp"},
                                         PathCase{"scratch..tiff", "scratch."}, PathCase{".tiff", ".tiff"},
                                         PathCase{"/a/.tiff", "/a/.tiff"}, PathCase{"..", ".."},
                                         PathCase{"/foo/bar.baz.zip", "/foo/bar.baz"}, PathCase{"zip.", "zip."},
                                         PathCase{"a.b/c", "a.b/c"}, PathCase{"a.b/", "a"}));

struct AppendCase {
    NSString path;
    NSString addition;
    std::optional<NSString> result;
};

class AppendingPathComponent : public testing::TestWithParam<AppendCase> {};
TEST_P(AppendingPathComponent, PutsOneSlashBetween) {
    EXPECT_EQ(GetParam().path.stringByAppendingPathComponent(GetParam().addition), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, AppendingPathComponent,
                         testing::Values(AppendCase{"", "", ""}, AppendCase{"", "x", "x"}, AppendCase{"", "/", "/"},
                                         AppendCase{"", "/x/", "/x"}, AppendCase{"/", "", "/"},
                                         AppendCase{"/", "x", "/x"}, AppendCase{"/", "/", "/"},
                                         AppendCase{"/tmp", "", "/tmp"}, AppendCase{"/tmp/", "", "/tmp"},
                                         AppendCase{"/tmp", "x", "/tmp/x"}, AppendCase{"/tmp/", "x", "/tmp/x"},
                                         AppendCase{"/tmp", "/x", "/tmp/x"},
                                         AppendCase{"/tmp//", "//x//y//", "/tmp/x/y"},
                                         AppendCase{"/home", "/", "/home"}, AppendCase{"a", "b", "a/b"}));

class AppendingPathExtension : public testing::TestWithParam<AppendCase> {};
TEST_P(AppendingPathExtension, PutsADotBetween) {
    EXPECT_EQ(GetParam().path.stringByAppendingPathExtension(GetParam().addition), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Paths, AppendingPathExtension,
                         testing::Values(AppendCase{"", "tiff", std::nullopt}, AppendCase{"/", "tiff", std::nullopt},
                                         AppendCase{"//", "tiff", std::nullopt}, AppendCase{"~x", "tiff", std::nullopt},
                                         AppendCase{"~", "tiff", std::nullopt}, AppendCase{"~/x", "tiff", "~/x.tiff"},
                                         AppendCase{"/tmp/scratch.old", "tiff", "/tmp/scratch.old.tiff"},
                                         AppendCase{"/tmp/scratch.", "tiff", "/tmp/scratch..tiff"},
                                         AppendCase{"/tmp/", "tiff", "/tmp.tiff"},
                                         AppendCase{"scratch", "tiff", "scratch.tiff"}));

struct ComponentsCase {
    NSString path;
    std::vector<NSString> components;
};

class PathComponents : public testing::TestWithParam<ComponentsCase> {};
TEST_P(PathComponents, KeepARootAndAFinalSlash) {
    EXPECT_EQ(GetParam().path.pathComponents(), GetParam().components);
}
INSTANTIATE_TEST_SUITE_P(Paths, PathComponents,
                         testing::Values(ComponentsCase{"", {}}, ComponentsCase{"/", {"/"}},
                                         ComponentsCase{"//", {"/"}}, ComponentsCase{"a", {"a"}},
                                         ComponentsCase{"/home/", {"/", "home", "/"}},
                                         ComponentsCase{"/home", {"/", "home"}}, ComponentsCase{"a//b", {"a", "b"}},
                                         ComponentsCase{"a/", {"a", "/"}},
                                         ComponentsCase{"//a//b//", {"/", "a", "b", "/"}}));

TEST(NSStringPaths, AbsolutePathBeginsWithASlash) {
    EXPECT_FALSE(NSString().isAbsolutePath());
    EXPECT_FALSE(NSString("a/b").isAbsolutePath());
    EXPECT_FALSE(NSString("~/b").isAbsolutePath());
    EXPECT_TRUE(NSString("/").isAbsolutePath());
    EXPECT_TRUE(NSString("/a").isAbsolutePath());
}

TEST(NSStringPaths, PathsMayHoldLoneSurrogates) {
    const NSString odd{std::u16string{u'/', 0xD800, u'.', 0xDC00}};
    EXPECT_EQ(odd.lastPathComponent().units(), (std::u16string{0xD800, u'.', 0xDC00}));
    EXPECT_EQ(odd.pathExtension().units(), (std::u16string{0xDC00}));
}

} // namespace
} // namespace qk
