#pragma once

#include <functional>
#include <random>

#include "tests/support/EditorDriver.h"

class frmDekBrowser;

/// A user who looks into everything that an open library shows and tries edits and commands of every kind, by real
/// events, whatever the library holds. An event that the window does not answer in time fails the test.
class Visitor {
public:
    Visitor(EditorDriver& driver, unsigned seed) : m_driver(driver), m_window(driver.window()), m_dice(seed) {}

    /// Does `act` as one event of the user: what it leads to is dealt with when this returns.
    void event(const char* what, const std::function<void()>& act);

    /// Looks into chapters, bills, features, contents and boxes, and asks for bills by code.
    void look();
    /// Tries `count` edits and commands.
    void work(int count);
    /// Opens the ration browser, chooses libraries and chapters, and takes a ration over.
    void browse();

    /// Brings a modal window to close as this user would: yes to most questions, a name where one is asked for.
    void answer(QWidget* window);

    int worked() const { return m_worked; }
    qint64 slowest() const { return m_slowest; }
    const std::string& slowestEvent() const { return m_slowestEvent; }

private:
    int upTo(int count) { return static_cast<int>(m_dice() % static_cast<unsigned>(count)); }
    bool isGone() const { return !m_driver.editor(); }
    void lookAtDetails();
    void walk(KeyedGrid* grid);
    void edit(KeyedGrid* grid);

    EditorDriver& m_driver;
    /// The one that events go to.
    QWidget* m_window;
    std::mt19937 m_dice;
    int m_worked = 0;
    qint64 m_slowest = 0;
    std::string m_slowestEvent;
};
