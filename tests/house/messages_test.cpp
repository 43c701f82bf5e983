// Every message in both languages: what the program says in Chinese stands beside what it says in English, and neither
// is left out or in the other's place. Read off the sources, since most messages are told in some rare case only.
#include "house/source_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace {

using house::SourceFile;

// A string literal, those that follow at once put together, or one character of anything else.
struct Token {
    bool is_text = false;
    std::string text;
    std::size_t line = 0; // from 1
};

// Literals as the source writes them, escapes and all.
std::vector<Token> tokens_of(const SourceFile& file)
{
    std::vector<Token> tokens;
    for (std::size_t line = 0; line < file.lines.size(); ++line) {
        const std::string& text = file.lines[line];
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '/' && i + 1 < text.size() && text[i + 1] == '/')
                break;
            if (std::isspace(static_cast<unsigned char>(text[i])) != 0)
                continue;
            const bool separates_digits = i > 0 && std::isalnum(static_cast<unsigned char>(text[i - 1])) != 0;
            if (text[i] == '\'' && !separates_digits && i + 2 < text.size()) { // a character
                i = std::min(text.find('\'', i + (text[i + 1] == '\\' ? 3U : 1U)), text.size());
                continue;
            }
            if (text[i] != '"') {
                tokens.push_back({false, std::string{text[i]}, line + 1});
                continue;
            }
            std::size_t end = i + 1;
            while (end < text.size() && text[end] != '"')
                end += text[end] == '\\' ? 2U : 1U;
            const std::string literal = text.substr(i + 1, end - i - 1);
            i = end;
            if (!tokens.empty() && tokens.back().is_text)
                tokens.back().text += literal;
            else
                tokens.push_back({true, literal, line + 1});
        }
    }
    return tokens;
}

bool has_chinese(std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte >= 0xE4 && byte <= 0xE9) || byte == 0xEF) // ideographs, and punctuation as wide as they are
            return true;
    }
    return false;
}

// What stands in the Chinese words in either edition: both languages at once where whoever looks may read either, and
// what the board's tools say.
bool is_for_both(const std::string& text)
{
    static const std::set<std::string> for_both = {"Download/下载", "Re-Download/重复下载", "Stop/停止",
        "Language/语言", "中文", "The program will be in Chinese from its next start on.\\n下次启动程序时使用中文。",
        "Download OK. / 下载成功。", "脱机下载板不支持您选择的 MCU。", "读 24C512 失败", "读 24C512 OK", "操作被停止."};
    return for_both.contains(text) || text.starts_with("Auto increment + (increment * 'Number of MCU') too big");
}

// What only the Chinese edition says: a title that the English box does without, notes to models that it does not
// offer.
bool is_for_chinese_alone(const std::string& text)
{
    static const std::set<std::string> alone = {"  调试用串口     ", "  串口调试助手     ", "串口调试助手:十六进制发送",
        "注:一旦烧录双倍速,由编程器擦除整个芯片才可恢复为单倍速", "双倍速、加密位只能由编程器擦除、读、写。"};
    return alone.contains(text);
}

bool is_char(const std::vector<Token>& tokens, std::size_t i, const char* character)
{
    return i < tokens.size() && !tokens[i].is_text && tokens[i].text == character;
}
bool is_text(const std::vector<Token>& tokens, std::size_t i) { return i < tokens.size() && tokens[i].is_text; }

std::string finding(const SourceFile& file, const Token& token, const std::string& what)
{
    return file.path + ":" + std::to_string(token.line) + ": " + what + ": " + token.text + "\n";
}

// A pair { "Chinese", "English" } that is not what it should be.
std::string look_at_pair(const SourceFile& file, const Token& chinese, const Token& english)
{
    if (!has_chinese(chinese.text) && !has_chinese(english.text))
        return {};
    if ((english.text.empty() && !is_for_chinese_alone(chinese.text)) || chinese.text.empty())
        return finding(file, chinese, "one of the languages says nothing");
    if (has_chinese(english.text) && !is_for_both(english.text))
        return finding(file, english, "Chinese in the English place");
    return {};
}

struct Looked {
    std::string findings;
    int pairs = 0; // with Chinese in them
};

Looked look_at(const SourceFile& file)
{
    Looked looked;
    const std::vector<Token> tokens = tokens_of(file);
    for (std::size_t i = 1; i + 2 < tokens.size(); ++i) {
        const bool pair = is_char(tokens, i - 1, "{") && is_text(tokens, i) && is_char(tokens, i + 1, ",") &&
            is_text(tokens, i + 2) && is_char(tokens, is_char(tokens, i + 3, ",") ? i + 4 : i + 3, "}");
        if (!pair)
            continue;
        looked.findings += look_at_pair(file, tokens[i], tokens[i + 2]);
        looked.pairs += has_chinese(tokens[i].text) ? 1 : 0;
    }
    return looked;
}

SourceFile of_text(std::vector<std::string> lines) { return {"a.cpp", std::move(lines)}; }

} // namespace

TEST(Messages, StandInBothLanguagesSideBySide)
{
    std::string findings;
    int pairs = 0;
    for (const SourceFile& file : house::whole_tree(PROJECT_DIR)) {
        // The strips of the options have rows of one edition, and tests of their own.
        const bool told = file.path.starts_with("src/") && !file.path.starts_with("src/options/option_p");
        if (!told && !file.path.starts_with("apps/isp/"))
            continue;
        const Looked looked = look_at(file);
        findings += looked.findings;
        pairs += looked.pairs;
    }
    EXPECT_EQ(findings, "");
    EXPECT_GT(pairs, 300) << "the test does not see the texts any more";
}

TEST(Messages, ThatAreOutAreFound)
{
    EXPECT_EQ(look_at(of_text({"char16_t sign = u'+'; // a plus"})).findings, "")
        << "the second quote has no end: it hung";
    EXPECT_EQ(look_at(of_text({R"(constexpr Text a = {"打开", "Open"};)"})).findings, "");
    EXPECT_NE(look_at(of_text({R"(constexpr Text a = {"打开", ""};)"})).findings, "");
    EXPECT_NE(look_at(of_text({R"(constexpr Text a = {"打开",)", R"(    "打" "开"};)"})).findings, "");
    EXPECT_NE(look_at(of_text({R"(constexpr Text a = {"Open", "打开"};)"})).findings, "");
    EXPECT_EQ(look_at(of_text({R"(// {"打开", ""})"})).findings, "") << "a comment";
}
