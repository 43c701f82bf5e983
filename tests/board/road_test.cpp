// The whole road: from a file over the board into a chip, which then holds what the file and the panel said.
#include "board/board_bench.h"

using namespace vrk;

namespace {

struct Road : BoardBench {
    explicit Road(const BoardJob& its_job)
        : BoardBench(its_job)
        , chip(chip_of(job.model))
    {
    }
    Road(const BoardJob& its_job, const sim::BoardSetup& setup)
        : BoardBench(its_job, setup)
        , chip(chip_of(job.model))
    {
    }
    // A new chip of the same kind in the socket.
    sim::BoardRun program_next()
    {
        sim::Chip next(chip_of(job.model));
        const sim::BoardRun run = sim::program_chip(board, next);
        flash = next.flash();
        options = next.options();
        return run;
    }
    bool chip_holds(const Bytes& file, std::size_t from = 0) const
    {
        return from + file.size() <= flash.size() &&
            std::equal(file.begin(), file.end(), flash.begin() + static_cast<std::ptrdiff_t>(from));
    }
    Bytes in_flash(std::size_t first, std::size_t count) const
    {
        return {flash.begin() + static_cast<std::ptrdiff_t>(first),
            flash.begin() + static_cast<std::ptrdiff_t>(first + count)};
    }

    sim::Chip chip;
    Bytes flash;
    std::array<std::uint8_t, 17> options{};
};

struct Way {
    const char* model;
    std::size_t code_size;
    std::vector<std::size_t> option_rows_set;
};

class RoadOfAModel : public ::testing::TestWithParam<Way> { };

} // namespace

TEST_P(RoadOfAModel, PutsFileAndOptionsIntoTheChip)
{
    Road road(job_for(GetParam().model, GetParam().code_size));
    ASSERT_EQ(road.run_with_power(), Result::good);
    EXPECT_EQ(road.board.violations(), "");
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_TRUE(road.chip_holds(pattern(GetParam().code_size)));
    for (const std::size_t row : GetParam().option_rows_set)
        EXPECT_EQ(road.options[row], 0x10 + row) << "option row " << row;
}

INSTANTIATE_TEST_SUITE_P(OfEachHeaderForm, RoadOfAModel,
    ::testing::Values(Way{"Aspen-8", 0x2000, {}}, Way{"Birch-16", 0x3F00, {1}}, Way{"Pine-16", 0x3000, {1}},
        Way{"Cedar-2", 0x0800, {2, 3, 8, 10, 11, 0}}, Way{"Fir-16", 0x4000, {2, 3, 8, 10, 11, 0}},
        Way{"Juniper-32", 0x8000, {0, 1, 2, 3, 8, 9}}, Way{"Juniper-60Q", 0xA000, {0, 1, 2, 3, 8, 9}},
        Way{"Larch-8", 0x2000, {0, 1, 2, 3, 8, 9}}),
    [](const auto& row) {
        std::string name = row.param.model;
        name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
        return name;
    });

TEST(Road, TakesCodeAboveTheFirstAreaOverTheSecondOne)
{
    const BoardJob job = job_for("Birch-62", 0xC800);
    sim::BoardSetup setup = board_for(job.model);
    setup.version = 0x16;
    Road road(job, setup);
    ASSERT_EQ(road.run_with_power(), Result::good);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_TRUE(road.chip_holds(pattern(0xC800)));
}

TEST(Road, TakesAFullChipOverTheTwoBanksOfASingleArea)
{
    const BoardJob job = job_for("Birch-62", 0xF000);
    sim::BoardSetup setup = board_for(job.model);
    setup.single_area = true;
    Road road(job, setup);
    ASSERT_EQ(road.run_with_power(), Result::good);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_TRUE(road.chip_holds(pattern(0xF000)));
}

TEST(Road, TakesDataToItsPlaceBehindTheCode)
{
    BoardJob job = job_for("Juniper-32Q", 0x8000);
    job.data = image_with(pattern(0x600, 9), 0x10001);
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_TRUE(road.chip_holds(pattern(0x8000)));
    EXPECT_TRUE(road.chip_holds(pattern(0x600, 9), static_cast<std::size_t>(job.model.eeprom_first)));
}

TEST(Road, EndsWithItsQuantity)
{
    BoardJob job = job_for("Birch-16");
    job.quantity = 3;
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    EXPECT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_EQ(road.program_next(), sim::BoardRun::used_up);
}

TEST(Road, CountsAllOf2049Chips)
{
    BoardJob job = job_for("Birch-16", 0x400);
    job.quantity = 2049;
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    int programmed = 0;
    while (programmed < 3000 && road.program_next() == sim::BoardRun::programmed)
        ++programmed;
    EXPECT_EQ(programmed, 2049);
}

TEST(Road, GivesEachChipANumberOfItsOwnAcrossABlocksEdge)
{
    BoardJob job = job_for("Birch-16");
    job.code_number = {true, 0x0081, 4, 0x00FF, 2, AutoIncrease::hex};
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_EQ(road.in_flash(0x7E, 4), (Bytes{0x00, 0x00, 0x00, 0xFF}));
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    EXPECT_EQ(road.in_flash(0x7E, 4), (Bytes{0x00, 0x00, 0x01, 0x01}));
    const Bytes file = pattern(0x3000);
    EXPECT_EQ(road.flash[0x7D], file[0x7D]);
    EXPECT_EQ(road.flash[0x82], file[0x82]);
}

// The tool's own number does not follow: two boards that are prepared alike would give the same ones.
TEST(Road, GivesTheNumbersThatTheJobHasTold)
{
    BoardJob job = job_for("Birch-16");
    job.quantity = 3;
    job.code_number = {true, 0x0081, 4, 5000, 20, AutoIncrease::hex};
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    EXPECT_EQ(road.report.lines.back(),
        "Auto increment of the code file: this board gives 5000 to 5040, increment 20. Next Value is still 5000: set "
        "it "
        "to 5060 before you prepare another board or program an MCU from here.");
    for (const Bytes& number :
        {Bytes{0x00, 0x00, 0x13, 0x88}, Bytes{0x00, 0x00, 0x13, 0x9C}, Bytes{0x00, 0x00, 0x13, 0xB0}}) {
        ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
        EXPECT_EQ(road.in_flash(0x7E, 4), number);
    }
    EXPECT_EQ(road.program_next(), sim::BoardRun::used_up);
}

TEST(Road, CountsANumberOfTheDataInItsOwnPlace)
{
    BoardJob job = job_for("Juniper-32Q", 0x8000);
    job.data = image_with(pattern(0x600, 9), 0x10001);
    job.data_number = {true, 0x0081, 4, 41, 1, AutoIncrease::ascii};
    Road road(job);
    ASSERT_EQ(road.run_with_power(), Result::good);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    ASSERT_EQ(road.program_next(), sim::BoardRun::programmed);
    const auto at = static_cast<std::size_t>(job.model.eeprom_first) + 0x7E;
    EXPECT_EQ(road.in_flash(at, 4), (Bytes{'2', '4', '0', '0'})) << "0042, its first digit highest";
}

TEST(Road, ShowsTheBoardWhatIsWrongWithIt)
{
    Road road(job_for("Birch-16"));
    ASSERT_EQ(road.run_with_power(), Result::good);
    road.board.memory()[0x4010] ^= 0x01;
    EXPECT_EQ(road.program_next(), sim::BoardRun::self_check_error);
    road.board.memory()[0x4010] ^= 0x01;
    road.board.memory()[0xEC20] ^= 0x01;
    EXPECT_EQ(road.program_next(), sim::BoardRun::self_check_error);
    road.board.memory()[0xEC20] ^= 0x01;
    sim::Chip other(chip_of(catalog_test::record("Juniper-32")));
    EXPECT_EQ(sim::program_chip(road.board, other), sim::BoardRun::wrong_model);
}
