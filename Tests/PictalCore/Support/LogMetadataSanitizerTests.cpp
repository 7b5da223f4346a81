#include "PictalCore/Support/LogMetadataSanitizer.h"
#include "Tests/Support/Redaction.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace LogMetadataSanitizer;

TEST(LogMetadataSanitizer, FlattensAndCuts) {
    EXPECT_EQ(sanitize("line1\nline2", 100), "line1 line2");
    EXPECT_EQ(sanitize(" a\r\n\tb\v", 100), " a   b\v");
    EXPECT_EQ(sanitize("0123456789", 4), "0123...");
    EXPECT_EQ(sanitize("0123456789", 10), "0123456789");
    EXPECT_EQ(sanitize("0123456789", 0), "...");
    EXPECT_EQ(sanitize("0123456789", -1), "...");
    EXPECT_EQ(sanitize("", -1), "");
    EXPECT_EQ(sanitize("e\u0301🇩🇪x", 2), "e\u0301🇩🇪...");
    EXPECT_EQ(sanitize("a\r\nb", 2), "a ...");  // a line break is two spaces when it is counted
}

TEST(LogMetadataSanitizer, TellsKeysApart) {
    struct Case {
        std::string_view key;
        bool freeText, path;
    };
    for (const Case& c :
         {Case{"Title", true, false}, Case{"subtitle", false, false}, Case{"OWNER", true, false},
          Case{"owners", false, false}, Case{"body", true, false},
          Case{"frontWindowTitle", true, false}, Case{"windowNames", true, false},
          Case{"windowOwnerName", true, false}, Case{"applicationName", true, false},
          Case{"windowTitlePath", true, true}, Case{"outputURL", false, true},
          Case{"profileID", false, true}, Case{"bundleID", false, true},
          Case{"workingDirectory", false, true}, Case{"Executable", false, true},
          Case{"message", false, false}, Case{"", false, false}}) {
        EXPECT_EQ(isSensitiveFreeTextKey(c.key), c.freeText) << c.key;
        EXPECT_EQ(isSensitivePathKey(c.key), c.path) << c.key;
    }
}

TEST(LogMetadataSanitizer, TheKeyDecides) {
    EXPECT_EQ(sanitize("Secret plan", "windowTitlePath", 3), "<redacted-metadata>");
    EXPECT_EQ(sanitize("/Users/me/x.png; /tmp/y.png", "filePath", 100),
              "<redacted-path>/x.png; <redacted-path>/y.png");
    EXPECT_EQ(sanitize("/Users/me/x.png", "filePath", 17), "<redacted-path>/x...");
    EXPECT_EQ(sanitize("at\t/Users/me/x.png", "message", 100), "at /Users/me/x.png");
    EXPECT_EQ(sanitizeErrorDescription("Could not write /private/var/folders/ab/T/x.tmp", 100),
              "Could not write <redacted-path>/x.tmp");
}

TEST(LogMetadataSanitizer, RedactsOnePath) {
    struct Case {
        std::string_view value, want;
    };
    for (const Case& c :
         {Case{"/Users/me/Desktop/Capture 1.png", "<redacted-path>/Capture 1.png"},
          Case{"/Users/me/Projects/", "<redacted-path>/Projects"},
          Case{"/opt//x///", "<redacted-path>/x"},
          Case{"~/Documents/report.pdf", "<redacted-path>/report.pdf"},
          Case{"~me", "<redacted-path>/~me"}, Case{"~/", "<redacted-path>/~"},
          Case{"/", "<redacted-path>//"}, Case{"///", "<redacted-path>//"},
          Case{"/a\n/b", "<redacted-path>/b"}, Case{"relative/file.txt", "relative/file.txt"},
          Case{" /tmp/x", " /tmp/x"}, Case{"", ""}})
        EXPECT_EQ(redactPath(c.value), c.want) << c.value;
}

TEST(LogMetadataSanitizer, RedactsPathsWithinText) {
    struct Case {
        std::string_view text, want;
    };
    for (const Case& c :
         {Case{"Saved /Users/me/a b.png, done", "Saved <redacted-path>/a b.png, done"},
          Case{"Saved /Users/me/a.png to folder x/y", "Saved <redacted-path>/y"},
          Case{"/variables", "<redacted-path>/variables"}, Case{"x/tmp", "x<redacted-path>/tmp"},
          Case{"/Applications/A.app;/Volumes/B/c;", "<redacted-path>/A.app;<redacted-path>/c;"},
          Case{"~/Users/me", "<redacted-path>/me"}, Case{"a~b ~ /~/c", "a~b ~ /<redacted-path>/c"},
          Case{"/tmp/a\n/opt/b", "<redacted-path>/b"},
          Case{"/opt /Library /users /TMP /va", "/opt /Library /users /TMP /va"},
          Case{"\xF0/Users/me/x", "\xF0<redacted-path>/x"},
          Case{"\xE6\xBC/tmp/\xC3,\xC3;", "\xE6\xBC<redacted-path>/\xC3,\xC3;"}, Case{"", ""}})
        EXPECT_EQ(redactEmbeddedPaths(c.text), c.want) << c.text;
}

TEST(LogMetadataSanitizer, NoListedPathSurvives) {
    constexpr std::array<std::string_view, 12> others{"/", "~", ",",    ";",    "\n", "\t",
                                                      "é", "x", "\xF0", "\xE2", " ",  "User"};
    std::mt19937 random(20240501);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto pieces = random() % 12; pieces > 0; --pieces)
            text += random() % 2 ? redactedRoots[random() % redactedRoots.size()]
                                 : others[random() % others.size()];
        ASSERT_EQ(survivingPath(text), "") << text;
    }
}

}  // namespace
}  // namespace pictal
