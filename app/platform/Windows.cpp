#include <windows.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <array>

#include "app/platform/Platform.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Whether this machine allows paths longer than MAX_PATH to programs that say they can deal with them, as this one's
/// manifest does.
bool areLongPathsEnabled() {
    using Asked = BOOLEAN(NTAPI*)();
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    // By way of void*: the compiler takes a direct cast between kinds of functions for a mistake.
    const auto asked =
        reinterpret_cast<Asked>(reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlAreLongPathsEnabled")));
    return asked && asked();
}

/// The longest path at which the database's own file has room for a journal beside it.
qsizetype longestPath() {
    constexpr qsizetype journal = 8;
    // With long paths it is the database that sets the limit, in bytes, of which a Chinese character takes three.
    static const qsizetype longest = (areLongPathsEnabled() ? 4 * MAX_PATH / 3 : MAX_PATH - 1) - journal;
    return longest;
}

}  // namespace

QString commandLine() {
    const wchar_t* rest = GetCommandLineW();
    // Blanks within quotes belong to the program's name.
    bool quoted = false;
    for (; *rest && (quoted || *rest > L' '); ++rest)
        quoted ^= *rest == L'"';
    return QString::fromWCharArray(*rest ? rest + 1 : rest);
}

QString computerName() {
    std::array<char, 255> name{};
    auto size = static_cast<DWORD>(name.size());
    return GetComputerNameA(name.data(), &size) ? QString::fromLocal8Bit(name.data(), static_cast<qsizetype>(size))
                                                : QString();
}

bool becomeRunningCopy(const QString& folder) {
    const QByteArray copy = QCryptographicHash::hash(folder.toLower().toUtf8(), QCryptographicHash::Sha1).toHex();
    const QString name = u"Local\\Tessel-"_s + QLatin1String(copy);
    // Never closed: the system does that when the process ends.
    return CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(name.utf16())) && GetLastError() == ERROR_SUCCESS;
}

QString objectionTo(const QString& path) {
    static const QRegularExpression device(u"^(CON|PRN|AUX|NUL|CONIN\\$|CONOUT\\$|(COM|LPT)[0-9¹²³])[ .]*(\\.|$)"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    const QString name = QFileInfo(QDir::fromNativeSeparators(path)).fileName();
    if (device.match(name).hasMatch())
        return u"“%1”是系统保留的设备名称，不能用作文件名，请换一个名称"_s.arg(name);
    if (name.endsWith(u'.') || name.endsWith(u' '))
        return u"文件名“%1”不能以句点或空格结尾"_s.arg(name);
    if (path.size() > longestPath())
        return u"文件路径太长（%1 个字符，最多 %2 个），请缩短文件名或移到上级文件夹：%3"_s.arg(path.size())
            .arg(longestPath())
            .arg(path);
    return {};
}

bool hasFileDialog() { return true; }

}  // namespace platform
