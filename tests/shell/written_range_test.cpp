// What of a buffer a download leaves out is what the dump shows standing back: it has to be what the chip does not get.
#include "shell/written_range.h"

#include "shell/buffer_bench.h"
#include "shell/open_file.h"

using namespace vrk;
using buffer_test::Bench;

TEST(WrittenRange, GoesWithTheFileToTheEndOfItsBlock)
{
    Bench bench("Birch-32"); // writes 512 bytes at a time
    load_file(bench.shell, bench.file("code.bin", std::string(0x601, 'c')), bench.code);
    EXPECT_EQ(written_range(bench.shell, BufferKind::code), (AddressRange{0, 0x7FF}));
}

TEST(WrittenRange, OfAModelWithAnEepromFileEndsWithTheCodeFileSinceTheRestOfTheBlockIsSentAs00)
{
    Bench bench("Hazel-5R");
    load_file(bench.shell, bench.file("code.bin", std::string(0x601, 'c')), bench.code);
    EXPECT_EQ(written_range(bench.shell, BufferKind::code), (AddressRange{0, 0x600}));
    EXPECT_EQ(written_range(bench.shell, BufferKind::data), AddressRange{}) << "no EEPROM file is open";
    load_file(bench.shell, bench.file("data.bin", std::string(0x20, 'd')), bench.data);
    EXPECT_EQ(written_range(bench.shell, BufferKind::data), (AddressRange{0, 0x1FF}))
        << "512 bytes are the least that a file counts as";
}
