// What the user types into the two text boxes of a bill.

#include <QPlainTextEdit>

#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

namespace {

bool broken(const QString& text) { return text.contains(u'\''); }

}  // namespace

void RandomUser::typeIntoBox() {
    const bool isRule = chance(50);
    QPlainTextEdit* box = isRule ? m_driver.rule() : m_driver.content();
    const QString before = box->toPlainText();
    const QString typed = anyText();
    enum Way { Tab, Command, Nothing };
    const Way way = oneOf({Tab, Tab, Command, Nothing});
    say(u"type \"%1\" into %2"_s.arg(typed, box->objectName()));
    if (way == Nothing) {
        m_driver.showPage(box);
        box->setFocus();
    } else {
        m_driver.typeInto(box, typed);
    }
    const bool locked = m_driver.bills()->row() < 0;
    QString text = locked || way == Nothing ? before : typed;
    // What is still being typed is written before a command runs; what cannot be written does not stay.
    if (way == Command && !locked && text != before) {
        m_driver.run(1, 108);
        if (broken(text))
            expectError("ModDBOperator.ExecuteDDL");
        if (failed())
            text = before;
    }
    m_driver.key(box, Qt::Key_Tab);
    if (!locked && broken(text))
        expectError("ModDBOperator.ExecuteDDL");
}
