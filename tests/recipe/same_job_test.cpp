// What is asked for in words goes into a chip as the window puts it there: for each series, at the defaults and with
// each option turned, from files and from projects that the window has saved.
#include "recipe/same_job.h"

#include "bench.h"

#include "options/option_pages.h"
#include "options/option_words.h"
#include "options/panel_rules.h"
#include "recipe/prepare.h"
#include "shell/make_job.h"
#include "shell/option_panel.h"
#include "shell/project.h"

#include <filesystem>

using namespace vrk;

namespace {

struct NoBoxes final : Boxes {
    void show_box(const Line& text, const Line&) override { shown.push_back(text.en); }
    bool ask(const Line& question, const Line&) override
    {
        shown.push_back(question.en);
        return false;
    }
    std::vector<std::string> shown;
};

// The window and the words side by side, on the same files.
struct Both : Bench {
    Both(const char* model, bool its_english)
        : Bench("Hazel-1", its_english)
        , english(its_english)
    {
        std::filesystem::create_directories(folder);
        TreeViewDevice_NodeClick(shell, model);
        recipe.model = model;
        recipe.english = english;
        recipe.line.port_path = port_path;
    }
    ~Both() { std::filesystem::remove_all(folder); }

    void open(std::size_t size)
    {
        recipe.file = folder + "/code.bin";
        write(recipe.file, Bench::pattern(size));
        read_load_parameters(shell, shell.code_buffer);
        load_file(shell, recipe.file, shell.code_buffer);
    }
    void open_eeprom(std::size_t size)
    {
        recipe.eeprom = folder + "/data.bin";
        write(recipe.eeprom, Bench::pattern(size, 3));
        load_file(shell, recipe.eeprom, shell.data_buffer);
    }
    static void write(const std::string& path, const std::vector<std::uint8_t>& bytes)
    {
        std::ofstream{path, std::ios::binary}.write(
            reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    void turn(int strip, int button)
    {
        form.option("Option" + std::to_string(strip), button).set_value(true);
        option_button_click(shell, strip, button);
    }

    Job job_of_words()
    {
        auto prepared = prepare(recipe, shell.mcu_table, boxes);
        if (const Refusal* refused = std::get_if<Refusal>(&prepared)) {
            ADD_FAILURE() << refused->why.en;
            return {};
        }
        return next_job(std::get<Batch>(prepared));
    }

    const bool english;
    const std::string folder = ::testing::TempDir() + "vrk_recipe_" + std::to_string(getpid());
    Recipe recipe;
    NoBoxes boxes;
};

using Case = std::tuple<const char*, bool>;
class EachSeries : public ::testing::TestWithParam<Case> {
protected:
    Both pair{std::get<0>(GetParam()), std::get<1>(GetParam())};
};

std::size_t code_size(const Both& pair)
{
    return static_cast<std::size_t>(std::min(pair.shell.selected.ap_last + 1, 0x1200));
}

} // namespace

TEST_P(EachSeries, HasTheJobOfTheWindowAtTheDefaults)
{
    pair.open(code_size(pair));
    if (has_eeprom_buffer(pair.shell.selected))
        pair.open_eeprom(0x180);
    expect_same_job(pair.job_of_words(), make_job(pair.shell));
}

TEST_P(EachSeries, HasTheJobOfTheWindowWithEachChoiceInTurn)
{
    pair.open(code_size(pair));
    const bool english = pair.english;
    const int page = option_page_of_series(pair.shell.selected.series).page;
    for (const Page& one : option_pages(english)) {
        if (one.number != page || pair.shell.selected.cap_no_option_write)
            continue;
        for (const Strip& strip : strips_of(one)) {
            if (strip.pair == nullptr || !strip_is_offered(pair.shell.selected, strip.index))
                continue;
            const OptionWords& words = *words_of(*strip.pair);
            for (int button : {0, 1}) {
                SCOPED_TRACE(std::string{words.option} + " " + std::to_string(button));
                build_option_panel(pair.shell);
                pair.turn(strip.index, button);
                pair.recipe.options = {
                    {std::string{words.option}, std::string{button == 0 ? words.first : words.second}}};
                expect_same_job(pair.job_of_words(), make_job(pair.shell));
            }
        }
    }
}

TEST_P(EachSeries, HasTheJobOfAProjectThatTheWindowHasSaved)
{
    pair.open(code_size(pair));
    if (has_eeprom_buffer(pair.shell.selected))
        pair.open_eeprom(0x180);
    for (int strip = 0; strip <= 13; ++strip) {
        const std::string name = "Option" + std::to_string(strip);
        if (pair.form.option(name, 0).value())
            pair.form.option(name, 1).set_value(true);
        else if (pair.form.option(name, 1).value())
            pair.form.option(name, 0).set_value(true);
    }
    pair.form.list("comWDT_Prescalar", 0).set_text("16");
    pair.form.list("comWDT_Prescalar", 1).set_text("8192");
    const std::string path = pair.folder + "/job.VRK";
    save_project(pair.shell, path);
    TreeViewDevice_NodeClick(pair.shell, "Oak-20V"); // another job in between
    open_project(pair.shell, path);

    pair.recipe.file = path;
    pair.recipe.model.clear();
    pair.recipe.eeprom.clear();
    expect_same_job(pair.job_of_words(), make_job(pair.shell));
}

INSTANTIATE_TEST_SUITE_P(OneModelEach, EachSeries,
    ::testing::Combine(::testing::Values("Alder-64", "Aspen-63", "Aspen-16", "Birch-8", "Cedar-4R", "Elm-8R", "Elm-28R",
                           "Fir-8R", "Fir-28R", "Hazel-4R", "Juniper-60Q", "Juniper-I62Q", "Larch-12V", "Maple-4S",
                           "Oak-20V", "Pine-32", "Rowan-8", "Spruce-16", "Poplar-4L", "Holly-4", "Willow-12R"),
        ::testing::Bool()),
    [](const ::testing::TestParamInfo<Case>& one) {
        std::string name = std::string{std::get<0>(one.param)} + (std::get<1>(one.param) ? "_en" : "_zh");
        std::ranges::replace(name, '-', '_');
        return name;
    });
