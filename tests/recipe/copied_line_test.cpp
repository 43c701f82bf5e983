// "Copy as command line": what is copied, read by a shell and by the parser of the command line, makes the job that
// stands on the screen; and a job that no words make is not copied.
#include "bench.h"

#include "form/named_controls.h"
#include "recipe/prepare.h"
#include "shell/make_job.h"
#include "shell/option_panel.h"
#include "shell/project.h"
#include "shell/serial_numbers.h"
#include "vrk/recipe_options.h"
#include "vrk/talk_options.h"

#include <filesystem>
#include <memory>

using namespace vrk;

namespace {

struct NoBoxes final : Boxes {
    void show_box(const Line&, const Line&) override { }
    bool ask(const Line&, const Line&) override { return false; }
};

struct Screen : Bench {
    explicit Screen(const char* model, bool english = true)
        : Bench("Hazel-1", english)
    {
        std::filesystem::create_directories(folder);
        TreeViewDevice_NodeClick(shell, model);
        load("code file.bin", pattern(0x300), shell.code_buffer);
    }
    ~Screen() { std::filesystem::remove_all(folder); }

    std::string write(const std::string& name, const std::vector<std::uint8_t>& bytes) const
    {
        std::ofstream{folder + "/" + name, std::ios::binary}.write(
            reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return folder + "/" + name;
    }
    void load(const std::string& name, const std::vector<std::uint8_t>& bytes, FileBuffer& buffer)
    {
        const std::string path = write(name, bytes);
        take_path(shell, buffer.kind, path);
        load_file(shell, path, buffer);
    }
    void choose(int strip, int index) { choose_option(shell, form.option("Option" + std::to_string(strip), index)); }
    std::string copy()
    {
        dialogs.copied.clear();
        click(shell, form.button("mnuCopyCommandLine"));
        return dialogs.copied;
    }

    // The line as a shell reads it, without the name of the program.
    static std::vector<std::string> words_in(const std::string& line)
    {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> shell_says(
            popen(("printf '%s\\n' " + line).c_str(), "r"), pclose);
        std::vector<std::string> words;
        char word[4096];
        while (std::fgets(word, sizeof word, shell_says.get()) != nullptr)
            words.emplace_back(trimmed(word));
        words.erase(words.begin());
        return words;
    }
    // And as the command line makes its job of it.
    Job job_of(const std::string& line) const
    {
        CLI::App app;
        CLI::App& flash = *app.add_subcommand("flash", "");
        RecipeOptions recipe_words;
        TalkOptions talk;
        describe_recipe(flash, recipe_words);
        describe_talk(flash, talk);
        std::vector<std::string> words = words_in(line);
        std::reverse(words.begin(), words.end()); // as the parser wants them
        app.parse(words);
        Recipe recipe = std::get<Recipe>(recipe_of(recipe_words));
        recipe.line = talk.line;
        recipe.line.port_path = talk.port;
        recipe.english = speaks_english(talk);
        NoBoxes boxes;
        return next_job(std::get<Batch>(prepare(recipe, shell.mcu_table, boxes)));
    }

    const std::string folder = ::testing::TempDir() + "vrk_copied's_" + std::to_string(getpid());
};

} // namespace

TEST(CopiedLine, OfAPlainJobIsShort)
{
    Screen screen("Juniper-60Q");
    const std::string line = screen.copy();
    EXPECT_TRUE(line.starts_with("vrk flash '")) << line;
    EXPECT_TRUE(line.ends_with(" --port simulated --model Juniper-60Q --language en")) << line;
    EXPECT_EQ(screen.job_of(line), make_job(screen.shell));
    EXPECT_TRUE(screen.report_says(line));
}

TEST(CopiedLine, HoldsEveryChoiceThatIsNotTheDefault)
{
    Screen screen("Juniper-60Q");
    screen.choose(0, 0);
    screen.choose(3, 1);
    screen.choose(10, 0);
    screen.form.list("comWDT_Prescalar", 0).set_text("16");
    screen.form.list("cobBaudMax").set_text("38400");
    screen.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    screen.form.list("comb_WDT").set_text("P1.5");
    const std::string line = screen.copy();
    for (const char* word : {"clock-source=internal", "oscillator-gain=low", "watchdog-locked=yes",
             "watchdog-divider=16", "watchdog-pin=P1.5", "--max-baud 38400"})
        EXPECT_NE(line.find(word), std::string::npos) << word << " in " << line;
    EXPECT_EQ(screen.job_of(line), make_job(screen.shell));
}

TEST(CopiedLine, HoldsTheOscillatorOfAFamilyThatHasOne)
{
    Screen screen("Holly-4", false);
    screen.form.list("com_RC_frequency", 5).set_text("12.0000");
    screen.form.list("com_RC_frequency", 4).choose(2);
    screen.form.list("com_RC_frequency", 1).choose(2);
    screen.form.text_box("txt_RC_frequency").set_text("77");
    const std::string line = screen.copy();
    EXPECT_NE(line.find("rc-target=12"), std::string::npos) << line;
    EXPECT_NE(line.find("--language zh"), std::string::npos) << line;
    EXPECT_EQ(screen.job_of(line), make_job(screen.shell));
}

TEST(CopiedLine, HoldsEepromStartAndNumber)
{
    Screen screen("Juniper-60Q");
    screen.form.text_box("txtAP_FileStart").set_text("0100");
    screen.load("code at 100.bin", Bench::pattern(0x200), screen.shell.code_buffer);
    screen.load("data.bin", Bench::pattern(0x80, 5), screen.shell.data_buffer);
    const char* fields[] = {"02FF", "4", "0123", "7"};
    for (std::size_t i = 0; i < 4; ++i)
        screen.form.text_box("texAuto_Increase", i).set_text(fields[i]);
    set_checked(screen.shell, screen.form.check_box("cheAuto_Increase"), true);
    ASSERT_TRUE(screen.shell.code_increase.valid);
    const std::string line = screen.copy();
    EXPECT_NE(line.find("--start 100"), std::string::npos) << line;
    EXPECT_NE(line.find("--number address=02FF,bytes=4,next=0123,step=7,system="), std::string::npos) << line;
    EXPECT_EQ(screen.job_of(line), make_job(screen.shell));
}

TEST(CopiedLine, NamesAProjectByItsFile)
{
    Screen screen("Juniper-60Q");
    screen.choose(10, 0);
    const std::string path = screen.folder + "/job.VRK";
    save_project(screen.shell, path);
    open_project(screen.shell, path);
    const std::string line = screen.copy();
    EXPECT_EQ(line.find("--model"), std::string::npos) << line;
    EXPECT_NE(line.find("job.VRK"), std::string::npos) << line;
    EXPECT_EQ(screen.job_of(line), make_job(screen.shell));
}

TEST(CopiedLine, IsNoneOfAJobWhoseBytesWereEdited)
{
    Screen screen("Juniper-60Q");
    screen.shell.code_buffer.data[5] ^= 0xFF;
    EXPECT_EQ(screen.copy(), "");
    ASSERT_EQ(screen.dialogs.shown.size(), 1U);
    EXPECT_NE(screen.dialogs.shown[0].box.text.find("Save it as a project"), std::string::npos);
}

TEST(CopiedLine, IsNoneOfAFileThatHasChangedSince)
{
    Screen screen("Juniper-60Q");
    screen.write("code file.bin", Bench::pattern(0x300, 9));
    EXPECT_EQ(screen.copy(), "");
    EXPECT_EQ(screen.dialogs.shown.size(), 1U);
}

TEST(CopiedLine, IsNoneBeforeAFileIsOpen)
{
    Screen screen("Juniper-60Q");
    TreeViewDevice_NodeClick(screen.shell, "Oak-20V");
    EXPECT_EQ(screen.copy(), "");
    ASSERT_EQ(screen.dialogs.shown.size(), 1U);
    EXPECT_EQ(screen.dialogs.shown[0].box.text, "Please open code file.");
}
