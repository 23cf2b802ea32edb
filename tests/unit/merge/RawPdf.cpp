#include "unit/merge/RawPdf.h"

namespace Quorlin::RawPdf {

QByteArray fileOf(const std::vector<QByteArray> &objects)
{
    QByteArray bytes("%PDF-1.4\n");
    QByteArray table("0000000000 65535 f \n");
    for (size_t i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes +=
            QByteArray::number(static_cast<int>(i) + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const auto start = bytes.size();
    const auto size = QByteArray::number(static_cast<int>(objects.size()) + 1);
    return bytes + "xref\n0 " + size + "\n" + table + "trailer\n<</Size " + size +
           "/Root 1 0 R>>\nstartxref\n" + QByteArray::number(start) + "\n%%EOF\n";
}

QByteArray stream(const QByteArray &data)
{
    return "<</Length " + QByteArray::number(data.size()) + ">>\nstream\n" + data + "\nendstream";
}

} // namespace Quorlin::RawPdf
