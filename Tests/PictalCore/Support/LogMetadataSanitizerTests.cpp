#include "PictalCore/Support/LogMetadataSanitizer.h"
#include "Tests/Support/Redaction.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal {

using namespace LogMetadataSanitizer;

TEST(LogMetadataSanitizer, FlattensAndCuts) {
    EXPECT_EQ(sanitize(" a\r\n\tb\v", 100), " a   b\v");
    EXPECT_EQ(sanitize("0123456789", 4), "0123...");
    EXPECT_EQ(sanitize("0123456789", 10), "0123456789");
    EXPECT_EQ(sanitize("0123456789", -1), "...");
    EXPECT_EQ(sanitize("e\u0301🇩🇪x", 2), "e\u0301🇩🇪...");
    EXPECT_EQ(sanitize("a\r\nb", 2), "a ...");  // a line break is two spaces when it is counted
}

TEST(LogMetadataSanitizer, TellsKeysApart) {
    const auto check = [](const std::vector<const char*>& keys, bool freeText, bool path) {
        for (const char* key : keys) {
            EXPECT_EQ(isSensitiveFreeTextKey(key), freeText) << key;
            EXPECT_EQ(isSensitivePathKey(key), path) << key;
        }
    };
    check({"Title", "OWNER", "body", "frontWindowTitle", "windowNames", "windowOwnerName",
           "applicationName"},
          true, false);
    check({"windowTitlePath"}, true, true);
    check({"outputURL", "profileID", "bundleID", "workingDirectory", "Executable"}, false, true);
    check({"subtitle", "owners", "message", ""}, false, false);
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
    EXPECT_EQ(redactPath("/Users/me/Desktop/Capture 1.png"), "<redacted-path>/Capture 1.png");
    EXPECT_EQ(redactPath("/opt//x///"), "<redacted-path>/x");
    EXPECT_EQ(redactPath("~me"), "<redacted-path>/~me");
    EXPECT_EQ(redactPath("~/"), "<redacted-path>/~");
    EXPECT_EQ(redactPath("/"), "<redacted-path>//");
    EXPECT_EQ(redactPath("/a\n/b"), "<redacted-path>/b");
    EXPECT_EQ(redactPath("relative/file.txt"), "relative/file.txt");
    EXPECT_EQ(redactPath(""), "");
}

TEST(LogMetadataSanitizer, RedactsPathsWithinText) {
    const auto redacted = redactEmbeddedPaths;
    EXPECT_EQ(redacted("Saved /Users/me/a.png to folder x/y"), "Saved <redacted-path>/y");
    EXPECT_EQ(redacted("/variables"), "<redacted-path>/variables");
    EXPECT_EQ(redacted("x/tmp"), "x<redacted-path>/tmp");
    EXPECT_EQ(redacted("/Applications/A.app;/Volumes/B/c;"),
              "<redacted-path>/A.app;<redacted-path>/c;");
    EXPECT_EQ(redacted("~/Users/me"), "<redacted-path>/me");
    EXPECT_EQ(redacted("a~b ~ /~/c"), "a~b ~ /<redacted-path>/c");
    EXPECT_EQ(redacted("/tmp/a\n/opt/b"), "<redacted-path>/b");
    EXPECT_EQ(redacted("/opt /Library /users /TMP /va"), "/opt /Library /users /TMP /va");
    EXPECT_EQ(redacted("\xE6\xBC/tmp/\xC3,\xC3;"), "\xE6\xBC<redacted-path>/\xC3,\xC3;");
}

TEST(LogMetadataSanitizer, NoListedPathSurvives) {
    constexpr std::array<std::string_view, 9> others{"/", "~", ",",    ";",   "\n",
                                                     "é", "x", "\xE2", "User"};
    std::mt19937 random(20240501);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto pieces = random() % 12; pieces > 0; --pieces)
            text += random() % 2 ? redactedRoots[random() % redactedRoots.size()]
                                 : others[random() % others.size()];
        ASSERT_EQ(survivingPath(text), "") << text;
    }
}

}  // namespace pictal
