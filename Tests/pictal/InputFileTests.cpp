#include "Tests/Support/Bytes.h"
#include "Tests/Support/TemporaryFolder.h"
#include "pictal/InputFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace pictal::program {

TEST(InputFile, ReadsAsFarAsItIsAsked) {
    const TemporaryFolder folder;
    const std::string path = folder / "in";
    std::string text(200'000, 'a');
    text[16] = 'b';
    std::ofstream(path) << text;

    auto input = InputFile::open(path).value();
    EXPECT_EQ(textOf(*input.first(16)), std::string(16, 'a'));
    EXPECT_EQ(textOf(*input.first(70'000)), text.substr(0, 70'000));
    EXPECT_EQ(input.first(3)->size(), 70'000U) << "what is there stays";
    EXPECT_EQ(input.size(), 200'000U);
    EXPECT_EQ(textOf(*std::move(input).all()), text);
    EXPECT_EQ(InputFile::open("/proc/self/status")->first(5)->size(), 5U)
        << "it calls itself empty";
}

TEST(InputFile, ReadsAPipeInPiecesAndLeavesTheRest) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const Descriptor in(ends[0]);
    Descriptor out(ends[1]);
    ASSERT_EQ(::write(out.value(), "0123456789", 10), 10);
    auto input = InputFile::open("/dev/fd/" + std::to_string(in.value())).value();
    EXPECT_EQ(input.size(), std::nullopt);
    EXPECT_EQ(textOf(*input.first(4)), "0123");
    char rest = 0;
    ASSERT_EQ(::read(in.value(), &rest, 1), 1);
    EXPECT_EQ(rest, '4');
    out.close();
    EXPECT_EQ(textOf(*input.first(100)), "012356789");
    EXPECT_EQ(input.size(), 9U);
}

TEST(InputFile, RefusesWhatIsOverTheLimit) {
    const TemporaryFolder folder;
    const std::string path = folder / "in";
    std::ofstream(path) << "0123456789";
    EXPECT_EQ(InputFile::open(path, 10)->first(100)->size(), 10U);
    EXPECT_EQ(InputFile::open(path, 9, "; stop").error().message,
              path + ": larger than 9 bytes; stop");
    auto endless = InputFile::open("/dev/zero", 1'000'000).value();
    EXPECT_EQ(endless.first(1'000'000)->size(), 1'000'000U);
    EXPECT_EQ(std::move(endless).all().error().message, "/dev/zero: larger than 1000000 bytes");
    EXPECT_EQ(InputFile::open(folder.path()).error().status, ExitStatus::usage);
}

}  // namespace pictal::program
