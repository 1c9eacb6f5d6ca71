#include "editor/mnemonics.h"
#include "platform/text.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringLiteral>

#include <gtest/gtest.h>

namespace {

struct MnemonicsRow
{
    const char* sentence;
    std::vector<std::wstring> texts;
    std::vector<std::wstring> marked;
};

void PrintTo(const MnemonicsRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Mnemonics : public ::testing::TestWithParam<MnemonicsRow>
{
};

TEST_P(Mnemonics, AreGivenInOrder)
{
    EXPECT_EQ(corma::withMnemonics(GetParam().texts), GetParam().marked);
}

// clang-format off
const MnemonicsRow mnemonicsRows[] = {
    {"AFirstLetter", {L"Save"}, {L"&Save"}},
    {"TheNextWordWhereTheFirstIsTaken", {L"Save Globally", L"Save in Project"},
                                        {L"&Save Globally", L"Save &in Project"}},
    {"AnyLetterWhereAllWordsAreTaken", {L"Stop", L"Search"}, {L"&Stop", L"S&earch"}},
    {"NoneWhereNoLetterIsFree", {L"A", L"a"}, {L"&A", L"a"}},
    {"BothCasesAreOneLetter", {L"anna", L"Alfa"}, {L"&anna", L"A&lfa"}},
    {"CyrillicLettersToo", {L"Глобальное", L"гора", L"Тип"}, {L"&Глобальное", L"г&ора", L"&Тип"}},
    {"LettersWithMarksToo", {L"écran"}, {L"&écran"}},
    {"ADigit", {L"3 x"}, {L"&3 x"}},
    {"NoSign", {L"...", L"\"Aa\""}, {L"...", L"\"&Aa\""}},
    {"AnAmpersandIsDoubled", {L"R&D", L"& r"}, {L"&R&&D", L"&& r"}},
    {"EmptyTextsStay", {L"", L"A"}, {L"", L"&A"}},
    {"NoTexts", {}, {}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, Mnemonics, ::testing::ValuesIn(mnemonicsRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(MnemonicHelper, LeavesOutLettersThatAreTaken)
{
    EXPECT_EQ(corma::withMnemonics({L"Aide", L"Fin"}, L"ai"),
              (std::vector<std::wstring> {L"Ai&de", L"&Fin"}));
    EXPECT_EQ(corma::withMnemonics({L"Aide"}, L"AIDE"), std::vector<std::wstring> {L"Aide"});
}

TEST(MnemonicHelper, GivesTextsAndAccessibleNames)
{
    QDialog dialog;
    auto* const button = new QPushButton(&dialog);
    auto* const group = new QGroupBox(&dialog);
    auto* const label = new QLabel(&dialog);
    auto* const edit = new QLineEdit(&dialog);
    label->setBuddy(edit);
    corma::setTextsWithMnemonics({{button, L"Type"}, {label, L"The text:"}, {group, L"R&D"}});
    EXPECT_EQ(button->text(), QStringLiteral("&Type"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Type"));
    EXPECT_EQ(label->text(), QStringLiteral("T&he text:"));
    EXPECT_EQ(edit->accessibleName(), QStringLiteral("The text:"));
    EXPECT_EQ(group->title(), QStringLiteral("&R&&D"));
}

} // namespace
