// The core's instructions against those of another simulator: both run the same program, and what they then hold is the
// same.
#include "real_core/compiled_program.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

using namespace vrk;

namespace {

using Code = std::vector<unsigned>;

// What the other one says to these commands.
std::string asked(const std::string& hex_file, const std::string& commands)
{
    const std::string line = "printf '" + commands + "quit\\n' | s51 -q -b -t C52 -X 11.0592M " + hex_file + " 2>&1";
    FILE* pipe = popen(line.c_str(), "r");
    std::string answer;
    char piece[512];
    while (pipe != nullptr && std::fgets(piece, sizeof piece, pipe) != nullptr)
        answer += piece;
    if (pipe != nullptr)
        pclose(pipe);
    return answer;
}

// The number behind the first place of a word.
long number_behind(const std::string& text, const std::string& word, int base)
{
    const std::size_t at = text.find(word);
    return at == std::string::npos ? -1 : std::strtol(text.c_str() + at + word.size(), nullptr, base);
}

// Lines of up to eight bytes: an address, from a fixed place on the bytes, and then their characters.
void expect_the_same_ram(const sim::Core8052& core, const std::string& dump)
{
    constexpr std::size_t first_place = 26;
    constexpr std::size_t width = 3;
    int compared = 0;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("0x") || line.size() < first_place)
            continue;
        unsigned long address = std::strtoul(line.c_str(), nullptr, 16);
        for (std::size_t i = 0; i < 8; ++i, ++address) {
            const std::string byte = line.substr(first_place + i * width, 2);
            if (byte == "  ")
                break;
            EXPECT_EQ(core.ram(static_cast<std::uint8_t>(address)), std::stoul(byte, nullptr, 16)) << address;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 256);
}

void expect_the_same(const sim::Core8052& core, const std::string& said)
{
    EXPECT_EQ(core.pc(), number_behind(said, "PC= ", 16));
    EXPECT_EQ(core.sfr(0xE0), number_behind(said, "ACC= ", 16));
    EXPECT_EQ(core.sfr(0xF0), number_behind(said, " B= ", 16));
    EXPECT_EQ(core.sfr(0xD0), number_behind(said, "PSW= ", 16));
    EXPECT_EQ(core.sfr(0x82) | core.sfr(0x83) << 8, number_behind(said, "DPTR= ", 16));
    EXPECT_EQ(core.cycles() * 12, number_behind(said.substr(0, said.find("Time in isr")), "sec (", 10));
    expect_the_same_ram(core, said.substr(said.find("Simulation: stopped")));
}

std::string hex_text(const Code& code)
{
    std::string text;
    char field[32];
    for (std::size_t first = 0; first < code.size(); first += 16) {
        const std::size_t count = std::min<std::size_t>(16, code.size() - first);
        std::snprintf(field, sizeof field, ":%02zX%04zX00", count, first);
        text += field;
        std::size_t sum = count + (first >> 8) + (first & 0xFF);
        for (std::size_t i = 0; i < count; ++i) {
            std::snprintf(field, sizeof field, "%02X", code[first + i]);
            text += field;
            sum += code[first + i];
        }
        std::snprintf(field, sizeof field, "%02X\n", static_cast<unsigned>(0x100 - (sum & 0xFF)) & 0xFF);
        text += field;
    }
    return text + ":00000001FF\n";
}

// A straight program of all instructions but those whose end lies elsewhere: jumps go to the next one. The serial port,
// the timers and the ports are left alone, and external memory is read where it has been written.
struct AnyProgram {
    explicit AnyProgram(unsigned seed)
        : random(seed)
    {
        for (unsigned address = 0xFF; address > 0; --address) // RAM begins with anything
            add({0x78, address, 0x76, number(256)}); // MOV R0; MOV @R0
        for (int i = 0; i < 3000; ++i)
            instruction();
        add({0x80, 0xFE});
    }
    unsigned number(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    unsigned direct()
    {
        constexpr std::array<unsigned, 4> registers{0xE0, 0xF0, 0x82, 0x83}; // the other one lets P be written
        return number(4) == 0 ? registers[number(registers.size())] : number(0x80);
    }
    unsigned bit_address()
    {
        constexpr std::array<unsigned, 4> flags{0xD7, 0xD6, 0xD5, 0xD2}; // the other one is late to change the bank
        switch (number(6)) {
        case 0:
            return flags[number(flags.size())];
        case 1:
            return 0xE0 + number(8);
        case 2:
            return 0xF0 + number(8);
        default:
            return number(0x80);
        }
    }
    void add(std::initializer_list<unsigned> bytes) { code.insert(code.end(), bytes); }
    void instruction()
    {
        const unsigned opcode = number(256);
        const unsigned row = opcode >> 4;
        const unsigned column = opcode & 15;
        const unsigned next = static_cast<unsigned>(code.size());
        if (opcode == 0xA5 || opcode == 0x22 || opcode == 0x32 || opcode == 0x73)
            return; // none; RET, RETI, JMP @A+DPTR
        if (column == 1) {
            if ((opcode & 0x10) == 0 && (next + 2) % 0x800 > 2)
                add({((next + 2) >> 8 & 7) << 5 | 1, (next + 2) & 0xFF}); // AJMP
            return;
        }
        switch (opcode) {
        case 0x02:
            return add({opcode, (next + 3) >> 8, (next + 3) & 0xFF});
        case 0x12: // LCALL, and what RET would take
            return add({opcode, (next + 3) >> 8, (next + 3) & 0xFF, 0xD0, direct(), 0xD0, direct()});
        case 0xC0: // PUSH, POP
        case 0xD0:
            return add({0xC0, direct(), 0xD0, direct()});
        case 0xE0: // MOVX there and back
        case 0xF0:
            return add({0xF0, 0xE4, 0xE0});
        case 0xE2:
        case 0xE3:
        case 0xF2:
        case 0xF3:
            return add({0xF2 | (column & 1), 0xE4, 0xE2 | (column & 1)});
        case 0x83: // MOVC from the program itself
        case 0x93:
            return add({0x90, number(2), number(256), 0x93});
        case 0x10:
        case 0x20:
        case 0x30:
            return add({opcode, bit_address(), 0});
        case 0x40:
        case 0x50:
        case 0x60:
        case 0x70:
        case 0x80:
            return add({opcode, 0});
        case 0x72:
        case 0x82:
        case 0x92:
        case 0xA0:
        case 0xA2:
        case 0xB0:
        case 0xB2:
        case 0xC2:
        case 0xD2:
            return add({opcode, bit_address()});
        case 0x90:
            return add({opcode, number(256), number(256)});
        case 0x43:
        case 0x53:
        case 0x63:
        case 0x75:
            return add({opcode, direct(), number(256)});
        case 0x85:
            return add({opcode, direct(), direct()});
        case 0xB4:
            return add({opcode, number(256), 0});
        case 0xB5:
        case 0xD5:
            return add({opcode, direct(), 0});
        case 0x74:
        case 0x24:
        case 0x34:
        case 0x44:
        case 0x54:
        case 0x64:
        case 0x94:
            return add({opcode, number(256)});
        case 0x42:
        case 0x52:
        case 0x62:
            return add({opcode, direct()});
        default:
            break;
        }
        if (column == 5)
            return add({opcode, direct()});
        if (column >= 6 && (row == 7 || row == 0xB))
            return row == 7 ? add({opcode, number(256)}) : add({opcode, number(256), 0});
        if (column >= 6 && (row == 8 || row == 0xA))
            return add({opcode, direct()});
        if (column >= 8 && row == 0xD)
            return add({opcode, 0});
        add({opcode});
    }

    std::mt19937 random;
    Code code;
};

} // namespace

TEST(SecondOpinion, IsTheSameOfAnyProgram)
{
    const std::string file = testing::TempDir() + "any_program.hex";
    for (unsigned seed = 1; seed <= 10; ++seed) {
        const AnyProgram any(seed);
        const std::string text = hex_text(any.code);
        std::ofstream(file) << text;
        sim::Core8052 core;
        ASSERT_TRUE(core.load(text));
        core.power(true);
        long count = 0;
        for (const std::size_t end = any.code.size() - 2; core.pc() != end; ++count)
            core.step();
        const std::string said = asked(file, "step " + std::to_string(count) + "\\nstate\\ndump iram 0 0xff 8\\n");
        expect_the_same(core, said);
        if (HasFailure()) {
            std::printf("seed %u\n%s", seed, said.c_str());
            break;
        }
    }
    std::remove(file.c_str());
}

TEST(SecondOpinion, IsTheSameOfACompiledProgramUpToItsFirstByte)
{
    CompiledProgram program("monitor/monitor");
    bool sends = false;
    program.on_sfr_written = [&sends](std::uint8_t address, std::uint8_t) { sends |= address == 0x99; };
    program.power(true);
    long count = 0;
    for (; !sends; ++count)
        program.step();
    EXPECT_GT(count, 10'000);
    const std::string said = asked(CompiledProgram::hex_file("monitor/monitor"),
        "step " + std::to_string(count) + "\\nstate\\ndump iram 0 0xff 8\\n");
    expect_the_same(program, said);
}
