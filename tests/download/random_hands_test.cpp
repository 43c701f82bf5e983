// Random hands at the window: any control, key, file or port changes at any moment of a download, a repeat, a reading
// of options or work on a project. Success is said only of a chip that holds what was on the screen at the press;
// nothing hangs, and the next press works.
//
// The judge keeps a copy of the screen's images from the moment of the press, and reads the chip's true flash.
#include "bench.h"

#include "shell/make_job.h"
#include "shell/project.h"

#include <cstdlib>
#include <filesystem>
#include <random>

using namespace vrk;

namespace {

constexpr std::uint32_t usual_seed = 20260101;
constexpr int usual_count = 2000;
constexpr int parts = 4; // run side by side
constexpr std::int64_t patience_us = 60'000'000;
constexpr std::uint32_t always_written = 0x1000; // no family's limit lies below it

std::uint32_t first_seed()
{
    const char* given = std::getenv("VRK_SEED");
    return given == nullptr ? usual_seed : static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
}

int hands_wanted()
{
    const char* given = std::getenv("VRK_HANDS");
    return given == nullptr ? usual_count : std::atoi(given);
}

struct Dice {
    std::mt19937 source;
    int below(int limit) { return static_cast<int>(source() % static_cast<unsigned>(limit)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename Value, std::size_t Count> Value one_of(const Value (&values)[Count])
    {
        return values[below(static_cast<int>(Count))];
    }
};

// A model of each series that the simulated chips know, models with fixed options among them.
constexpr const char* models[] = {"Alder-64", "Aspen-16", "Birch-8", "Cedar-4R", "Elm-4R", "Fir-8R", "Hazel-2R",
    "Hazel-5", "Juniper-8", "Juniper-60Q", "Juniper-I62Q", "Larch-8V", "Larch-I14", "Maple-4S", "Oak-16", "Pine-32",
    "Rowan-8", "Spruce-16", "Holly-4", "Willow-12R"};
constexpr const char* texts[] = {"", "0", "1", "7", "1FF", "00FF", "ZZZZ", "999999999", "-1", "Juniper-60Q", "Hazel-1"};
constexpr const char* keys[] = {"A", "5", "f", "Up", "Down", "Left", "Right", "PageUp", "PageDown", "Esc", "Enter"};

struct Screen {
    std::vector<std::uint8_t> code;
    std::int32_t low = 0;
    std::int32_t high = 0;
};

struct HandBench : Bench {
    HandBench(const char* model, bool english, std::uint32_t seed)
        : Bench(model, english)
        , dice{std::mt19937{seed}}
        , model_(model)
        , seed_(seed)
    {
        std::filesystem::create_directories(folder_);
        write_file("code.bin", 0x40 + dice.below(0x700));
        write_file("other.bin", 0x200);
        shell.loader.application_dir = folder_;
        shell.loader.documents_dir = folder_;
        chip.on_state_change.push_back([this](sim::Chip::State now) { look(now); });
        wire.on_tool_open = [this] { reload_is_done(); };
        keep_watching();
    }
    ~HandBench()
    {
        dialogs.replies.clear();
        std::error_code fault;
        std::filesystem::remove_all(folder_, fault);
    }

    void open_file()
    {
        take_path(shell, BufferKind::code, folder_ + "/code.bin");
        ASSERT_TRUE(load_file(shell, folder_ + "/code.bin", shell.code_buffer));
        code_size = static_cast<std::size_t>(shell.code_buffer.high) + 1;
    }

    // The press, and a look at the screen right behind it: a reload belongs to the press.
    void press(std::string_view control, int index = Control::no_index)
    {
        after_ms(0, [this, name = std::string{control}, index] { click(shell, *shell.controls.find(name, index)); });
        after_ms(0, [this] { watch_for_a_press(); });
    }

    // A fixture: a chip without power gets it again, one that has left its loader is taken out.
    void serve_fixture(int times)
    {
        for (int i = 0; i < times; ++i) {
            after_ms(300 + 2500 * i, [this] {
                if (chip.state() == sim::Chip::State::off)
                    chip.power_up();
            });
        }
    }

    void hand()
    {
        if (dice.chance(15))
            return other_hand();
        const auto& all = shell.controls.all();
        Control& control = *all[static_cast<std::size_t>(dice.below(static_cast<int>(all.size())))];
        if (control.name == "comStop_Download" && !dice.chance(10))
            return;
        touch(control);
    }

    // Everything as at the beginning, whatever the hands have left.
    void put_right()
    {
        dialogs.replies.clear();
        dialogs.choices.clear();
        if (panel_state(shell) == panel::locked)
            click(shell, form.button("comUnlockOptions"));
        ports.remove("other");
        const auto& items = form.list("combCommPort").items();
        if (std::find(items.begin(), items.end(), port_path) == items.end())
            ports.add(port_path, wire);
        run_for_ms(10); // until the list has it again
        form.list("combCommPort").set_text(port_path);
        form.list("cobBaudMin").set_text("2400");
        form.list("cobBaudMax").set_text("115200");
        form.check_box("cheTL").set_value(false);
        form.check_box("cekReloadFile").set_value(false);
        form.check_box("cekReloadFileWhileFileChange").set_value(false);
        form.option("opt_ISP_DEMO_WDT", 0).set_value(true);
        form.text_box("txtAP_FileStart").set_text("0000");
        form.check_box("cheClearAP_Buffer").set_value(true);
        form.list("com_RC_frequency", 5).set_text("11.0592");
        form.text_box("txtWrite_OK_Count").set_text("0");
        shell.platform.settings.set("Settings", "Write_OK_Count", "0");
        select(model_);
        write_file("code.bin", 0x300);
        open_file();
    }

    Dice dice;
    int good = 0;

private:
    Screen screen() const { return {shell.code_buffer.data, shell.code_buffer.low, shell.code_buffer.high}; }

    void write_file(const char* name, int size)
    {
        const auto bytes = pattern(static_cast<std::size_t>(size), seed_ + static_cast<std::uint32_t>(++files_));
        std::ofstream(folder_ + "/" + name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    // The screen as it is when a sequence begins, whoever has begun it: a hand, or the watch of the file.
    void watch_for_a_press()
    {
        if (shell.running && !was_running_) {
            remember();
            began_us_ = loop.now_us();
        }
        was_running_ = shell.running;
        between_chips_ = between_chips_ && shell.running;
        if (shell.running && loop.now_us() - began_us_ > patience_us)
            click(shell, form.button("comStop_Download")); // of a call that nobody answers
    }
    void keep_watching()
    {
        watch_for_a_press();
        after_ms(5, [this] { keep_watching(); });
    }

    // A command to user code goes out before the reload of the download behind it, which opens the port once more.
    // Between the chips of a repeat nothing is reloaded.
    void reload_is_done()
    {
        const std::string& word = form.label("labVerdict").caption();
        if (shell.running && !between_chips_ && (word == "WAITING" || word == "等待连接"))
            remember();
    }

    void remember()
    {
        screen_ = screen();
        options_ = make_job(shell).options; // a command to user code goes out before the job is made
        counted_ = count();
    }

    // A chip that leaves its loader and was counted holds what stood on the screen at the press; of a repeat, with the
    // number that was stamped for it. Nothing but that number has changed on the screen meanwhile.
    void look(sim::Chip::State now)
    {
        if (now != sim::Chip::State::user_code || !shell.running || count() != counted_ + 1)
            return; // it has left by itself, or was not counted
        ++good;
        const std::int32_t first = std::max(screen_.low, 0);
        const std::int32_t last =
            std::min({screen_.high, shell.selected.ap_last, static_cast<std::int32_t>(always_written)});
        for (std::int32_t at = first; at <= last; ++at) {
            const auto place = static_cast<std::size_t>(at);
            ASSERT_EQ(chip.flash()[place], screen_.code[place]) << "said to be good, and is not, at " << at;
            ASSERT_TRUE(is_number(at) || shell.code_buffer.data[place] == screen_.code[place])
                << "the screen has changed under the download, at " << at;
        }
        EXPECT_EQ(chip.setup().model.series, shell.selected.series);
        EXPECT_TRUE(std::equal(
            &options_.bytes[0][0], &options_.bytes[0][0] + sizeof options_.bytes, &shell.options.bytes[0][0]))
            << "options changed on their way";
        remember();
        between_chips_ = true;
    }

    bool is_number(std::int32_t address) const
    {
        const AutoIncrease& number = shell.code_increase;
        return number.valid && address <= number.address && address > number.address - number.bytes;
    }

    void touch(Control& control)
    {
        if (auto* box = dynamic_cast<TextBox*>(&control)) {
            const int act = dice.below(3);
            if (act == 0)
                type_text(shell, *box, dice.one_of(texts));
            else if (act == 1)
                put_caret(shell, *box, dice.below(200), dice.below(2));
            else
                press_key(shell, *box, dice.one_of(keys));
        } else if (auto* list = dynamic_cast<ComboBox*>(&control)) {
            choose_item(shell, *list, dice.below(static_cast<int>(list->items().size()) + 1));
        } else if (auto* tree = dynamic_cast<Tree*>(&control)) {
            const auto& nodes = tree->nodes();
            choose_node(shell, *tree, nodes[static_cast<std::size_t>(dice.below(static_cast<int>(nodes.size())))].key);
        } else if (auto* strip = dynamic_cast<TabStrip*>(&control)) {
            choose_tab(shell, *strip, dice.below(static_cast<int>(strip->tabs().size())));
        } else if (auto* bar = dynamic_cast<ScrollBar*>(&control)) {
            scroll_to(shell, *bar, dice.below(100));
        } else {
            offer_answers();
            click(shell, control);
        }
    }

    void offer_answers()
    {
        constexpr Reply replies[] = {Reply::ok, Reply::yes, Reply::no};
        dialogs.replies.assign(1, dice.one_of(replies));
        dialogs.choices.clear();
        const char* names[] = {"/code.bin", "/other.bin", "/job.VRK", "/nothing.hex"};
        if (dice.chance(80))
            dialogs.choices.push_back(folder_ + dice.one_of(names));
    }

    // Files and ports.
    void other_hand()
    {
        switch (dice.below(5)) {
        case 0:
            return write_file("code.bin", 0x40 + dice.below(0x700));
        case 1: {
            std::error_code fault;
            std::filesystem::remove(folder_ + "/code.bin", fault);
            return;
        }
        case 2:
            return ports.add("other", wire);
        case 3:
            return ports.remove("other");
        default:
            if (dice.chance(20))
                ports.remove(port_path);
        }
    }

    const std::string folder_ = ::testing::TempDir() + "vrk_hands_" + std::to_string(getpid());
    std::string model_;
    std::uint32_t seed_;
    int files_ = 0;
    bool was_running_ = false;
    bool between_chips_ = false;
    std::int64_t began_us_ = 0;
    Screen screen_; // of the chip that is next
    OptionImage options_;
    int counted_ = 0;
};

constexpr std::pair<const char*, int> presses[] = {{"comDownload", 0}, {"comDownload", 0}, {"comDownload", 1},
    {"comDownload", 1}, {"comReadChipLock", Control::no_index}, {"comSaveBatchFile", Control::no_index}};

// One shift of one seed. Answers how many chips were said to be good.
int one_shift(std::uint32_t seed)
{
    Dice choice{std::mt19937{seed ^ 0x5EEDU}};
    HandBench bench(choice.one_of(models), choice.chance(50), seed);
    bench.open_file();
    bench.form.list("comDalay_ReDownLoad").set_text("1");
    if (choice.chance(30)) {
        bench.form.text_box("texAuto_Increase", 0).set_text("0020");
        bench.form.text_box("texAuto_Increase", 1).set_text("2");
        bench.form.text_box("texAuto_Increase", 2).set_text("0001");
        set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    }
    for (const char* box : {"cekReloadFile", "cekReloadFileWhileFileChange"})
        bench.form.check_box(box).set_value(choice.chance(20));
    for (int before = choice.below(4); before > 0; --before)
        bench.hand();

    const auto [control, index] = choice.one_of(presses);
    bench.press(control, index);
    bench.serve_fixture(4);
    for (int hands = choice.below(30); hands > 0; --hands)
        bench.after_ms(1 + choice.below(9000), [&bench] { bench.hand(); });
    bench.run_until_idle_or_given_up();
    bench.run_for_ms(10'000); // the hands that were late, and what they have started
    if (bench.shell.running)
        bench.run_until_idle_or_given_up();

    EXPECT_EQ(bench.shell.port.is_open(), bench.shell.desk.terminal.has_port) << "nobody else keeps it open";
    EXPECT_FALSE(bench.form.button("comStop_Download").enabled());
    EXPECT_TRUE(panel_state(bench.shell) == panel::free || panel_state(bench.shell) == panel::locked);
    bench.repair();
    bench.put_right();
    bench.expect_a_clean_next_download();
    return bench.good;
}

class RandomHands : public ::testing::TestWithParam<int> { };

} // namespace

TEST_P(RandomHands, NeverPutAnotherJobIntoAChipThatIsSaidToBeGood)
{
    int good = 0;
    const int wanted = hands_wanted() / parts;
    for (int i = 0; i < wanted; ++i) {
        const std::uint32_t seed = first_seed() + static_cast<std::uint32_t>(GetParam() * wanted + i);
        good += one_shift(seed);
        ASSERT_FALSE(HasFailure()) << "to replay: VRK_SEED=" << seed - static_cast<std::uint32_t>(GetParam())
                                   << " VRK_HANDS=" << parts << " test_download --gtest_filter='*RandomHands*/"
                                   << GetParam() << "'";
    }
    // Enough chips were good for the judge to have had work.
    EXPECT_TRUE(wanted < 100 || good > wanted / 2) << good << " good ones";
}

INSTANTIATE_TEST_SUITE_P(Parts, RandomHands, ::testing::Range(0, parts));
