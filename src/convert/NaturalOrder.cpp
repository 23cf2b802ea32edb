#include "convert/NaturalOrder.h"

namespace Quorlin::NaturalOrder {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Takes the number that begins at the position, without leading zeros.
QStringView takeNumber(QStringView text, qsizetype &position)
{
    const auto begin = position;
    while (position < text.size() && isDigit(text[position]))
        ++position;
    auto number = text.sliced(begin, position - begin);
    while (number.size() > 1 && number.startsWith(QLatin1Char('0')))
        number = number.sliced(1);
    return number;
}

int compareNumbers(QStringView left, QStringView right)
{
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

int compareNames(QStringView left, QStringView right)
{
    qsizetype l = 0;
    qsizetype r = 0;
    while (l < left.size() && r < right.size()) {
        int order = 0;
        if (isDigit(left[l]) && isDigit(right[r])) {
            const auto number = takeNumber(left, l);
            order = compareNumbers(number, takeNumber(right, r));
        } else {
            order = left.sliced(l++, 1).compare(right.sliced(r++, 1), Qt::CaseInsensitive);
        }
        if (order != 0)
            return order;
    }
    return static_cast<int>(r < right.size()) * -1 + static_cast<int>(l < left.size());
}

} // namespace

bool less(const QString &left, const QString &right)
{
    const auto order = compareNames(left, right);
    return order != 0 ? order < 0 : left < right;
}

} // namespace Quorlin::NaturalOrder
