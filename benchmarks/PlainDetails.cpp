#include "benchmarks/PlainDetails.h"

PlainDetails::PlainDetails(PlainDatabase& library)
    : m_contents(library.prepare("SELECT * FROM tblCont WHERE BillID=? AND Prof LIKE '%01%' ORDER BY Num")),
      m_details(library.prepare("SELECT * FROM tblContDe WHERE ContID BETWEEN ? AND ?")),
      m_features(library.prepare("SELECT * FROM tblBillSpec WHERE BillID=?")),
      m_values(library.prepare("SELECT * FROM tblSpecEnum WHERE SpecID=?")) {}

void PlainDetails::read(int bill) {
    readNew(bill);
    m_details.bindAll((bill - 1) * 8 + 1, bill * 8);
    m_details.readAll();
    readValues((bill - 1) * 2 + 1);
}

void PlainDetails::readNew(qint64 bill) {
    m_contents.bindAll(bill);
    m_contents.readAll();
    m_features.bindAll(bill);
    m_features.readAll();
}

void PlainDetails::readValues(qint64 feature) {
    m_values.bindAll(feature);
    m_values.readAll();
}
