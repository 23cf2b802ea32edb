#include "settings/IniFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <vector>

using Quorlin::IniFile;

namespace {

constexpr int Lines = 300;
constexpr int Groups = 10;
constexpr int Rounds = 500;

/// A file as a language or skin file is: groups, names of some length, texts with umlauts.
QByteArray sampleFile()
{
    QByteArray bytes;
    for (int line = 0; line < Lines; ++line) {
        const auto number = QByteArray::number(line);
        if (line % (Lines / Groups) == 0)
            bytes += "[GROUP" + number + "]\r\n";
        else
            bytes += "ClassicElement" + number + "PosX = Wert f\xFCr Zeile " + number + "\r\n";
    }
    return bytes;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Microseconds of each round; the first ones, which fill the caches, are left out.
template <typename Action>
std::vector<double> timed(Action &&action)
{
    constexpr int WarmUp = 20;
    std::vector<double> values;
    for (int round = 0; round < WarmUp + Rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        if (!action())
            return {};
        if (round >= WarmUp)
            values.push_back(double(timer.nsecsElapsed()) / 1000.0);
    }
    return values;
}

} // namespace

int main()
{
    QTextStream out(stdout);
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("sample.ini"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(sampleFile()) < 0)
        return 1;
    file.close();

    const auto raw = timed([&path] {
        QFile reader(path);
        return reader.open(QIODevice::ReadOnly) && !reader.readAll().isEmpty();
    });
    const auto load = timed([&path] {
        IniFile ini;
        return ini.Load(path) == 0;
    });
    IniFile ini;
    const auto loaded = ini.Load(path) == 0;
    const auto lookups = timed([&ini] {
        for (const auto &var : ini.GetVars()) {
            if (ini.GetVar(var->Name) != var->Value)
                return false;
        }
        return true;
    });
    if (!loaded || raw.empty() || load.empty() || lookups.empty()) {
        out << "the sample could not be read\n";
        return 1;
    }
    out << Lines << " lines, " << file.size() << " bytes, medians of " << Rounds << " rounds\n"
        << "read the bytes only   " << median(raw) << " us\n"
        << "load into the model   " << median(load) << " us  (" << median(load) / median(raw)
        << " x)\n"
        << "look every key up     " << median(lookups) << " us\n";
    return 0;
}
