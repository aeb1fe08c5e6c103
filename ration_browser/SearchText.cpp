#include "ration_browser/SearchText.h"

#include <algorithm>
#include <array>
#include <utility>

// The build asks ICU for them: a letter for each character from firstHan to lastHan.
extern const char pinyinInitials[];
extern const char pinyinNameInitials[];

namespace {

constexpr char16_t firstHan = 0x3400;
constexpr char16_t lastHan = 0x9fff;
constexpr qsizetype mostCompared = 2000;

/// Other readings that rations use and the tables do not have.
constexpr std::pair<char16_t, char> alsoReadAs[] = {
    {u'给', 'j'}, {u'调', 't'}, {u'弹', 't'}, {u'圈', 'j'}, {u'系', 'j'}, {u'行', 'h'}, {u'降', 'x'},
    {u'校', 'j'}, {u'传', 'z'}, {u'石', 'd'}, {u'轧', 'z'}, {u'率', 's'}, {u'厦', 'x'}, {u'参', 's'},
    {u'便', 'p'}, {u'会', 'k'}, {u'柏', 'b'}, {u'朝', 'z'}, {u'盛', 'c'}, {u'刨', 'b'}, {u'卡', 'q'},
    {u'茄', 'q'}, {u'壳', 'q'}, {u'还', 'h'}, {u'堡', 'p'}, {u'屏', 'b'}, {u'扁', 'p'}, {u'炮', 'b'},
    {u'提', 'd'}, {u'藏', 'z'}, {u'拓', 't'}, {u'尾', 'y'}, {u'囤', 't'}, {u'泊', 'b'}, {u'吓', 'h'},
};

constexpr quint32 bit(char16_t letter) { return letter >= u'a' && letter <= u'z' ? 1U << (letter - u'a') : 0; }

using Initials = std::array<quint32, lastHan - firstHan + 1>;

/// The letters with which each character may be read, as bits.
Initials readInitials() {
    Initials initials{};
    for (std::size_t i = 0; i < initials.size(); ++i)
        initials[i] = bit(static_cast<uchar>(pinyinInitials[i])) | bit(static_cast<uchar>(pinyinNameInitials[i]));
    for (const auto& [character, letter] : alsoReadAs)
        initials[character - firstHan] |= bit(static_cast<uchar>(letter));
    return initials;
}

QString folded(const QString& text) { return text.normalized(QString::NormalizationForm_KC).toCaseFolded(); }

/// Appends to `text` what begins at `from` without signs, when there are any.
void appendWithoutSigns(QString& text, qsizetype from) {
    const qsizetype end = text.size();
    const auto isSign = [&](qsizetype at) {
        if (text[at].isLetterOrNumber() || text[at].isSurrogate())
            return false;
        // Without its point 2.5 would be another number.
        return at == from || at + 1 == end || !text[at - 1].isDigit() || !text[at + 1].isDigit();
    };
    qsizetype at = from;
    while (at < end && !isSign(at))
        ++at;
    if (at == end)
        return;
    text += u'\n';
    for (at = from; at < end; ++at)
        if (!isSign(at))
            text += text[at];
}

}  // namespace

Searchable::Searchable(const QString& code, const QString& name)
    : text(folded(code.left(mostCompared) + u'\n' + name.left(mostCompared))), codeLength(text.indexOf(u'\n')) {
    appendWithoutSigns(text, codeLength + 1);
}

QStringList searchWords(const QString& typed) { return folded(typed).simplified().split(u' ', Qt::SkipEmptyParts); }

bool containsAll(const Searchable& text, const QStringList& words) {
    static const Initials initials = readInitials();
    const auto matches = [](QChar is, QChar typed) {
        const char16_t character = is.unicode();
        return is == typed || (character >= firstHan && character <= lastHan &&
                               (initials[character - firstHan] & bit(typed.unicode())) != 0);
    };
    return std::ranges::all_of(words, [&](const QString& word) {
        return std::search(text.text.begin(), text.text.end(), word.begin(), word.end(), matches) != text.text.end();
    });
}
