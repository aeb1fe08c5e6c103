#pragma once

#include <QLockFile>
#include <memory>

/// Tells whether another copy of this program folder is running for this user on this machine. The mark is freed when
/// the process ends, however it ends: a copy that crashed does not block the next start.
class SingleInstance {
public:
    SingleInstance();

    [[nodiscard]] bool anotherIsRunning() const { return m_anotherIsRunning; }

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_anotherIsRunning = false;
};
