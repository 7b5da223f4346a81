#include "PictalCore/Support/SafeFileNamer.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {

TEST(SafeFileNamer, MakesStems) {
    struct Case {
        std::string_view raw, want;
        std::string_view fallback = "";
        std::int64_t maxLength = std::numeric_limits<std::int64_t>::max();
    };
    for (const Case& c :
         {Case{"My Screenshot 2024/05/01 10:30", "My-Screenshot-2024-05-01-10-30"},
          Case{"--Hello,  World!--", "Hello-World"}, Case{"Résumé (final).png", "Résumé-final-png"},
          Case{"截图 一", "截图-一"}, Case{"½ Ⅳ ٣", "½-Ⅳ-٣"}, Case{"_draft_", "_draft_"},
          Case{"...", "Screenshot", "Screenshot"}, Case{"😀", "file"}, Case{"", "file"},
          Case{"/", "a/b", "a/b"},
          // A hyphen separates even where a mark combines with it.
          Case{"a-\u0301b", "a-\u0301b"}, Case{"-\u0301b", "\u0301b"},
          Case{"a\xF0\x62\xFFz", "a-b-z"}, Case{std::string_view("a\0b\x1B[c", 6), "a-b-c"},
          // Cuts: behind a hyphen, to nothing, at both ends, not at all, one too many.
          Case{"abcd-efgh", "abcd", "", 5}, Case{"__-ab", "", "x", 3}, Case{"_abc_d", "abc", "", 5},
          Case{"abcd_", "abcd_", "", 5}, Case{"abcd_e", "abcd", "", 5},
          Case{"e\u0301e\u0301e\u0301", "e\u0301e\u0301", "", 2}, Case{"abc", "", "x", 0},
          Case{"abc", "", "x", -7}, Case{"", "long", "long_name", 5}})
        EXPECT_EQ(SafeFileNamer::stem(c.raw, c.fallback, c.maxLength), c.want) << c.raw;
}

}  // namespace pictal
