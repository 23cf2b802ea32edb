#pragma once

#include "tool/Console.h"

#include <QByteArray>

namespace Quorlin {

/// A console that keeps what is written to it.
class KeptConsole : public Console
{
public:
    explicit KeptConsole(int width = 0) : m_width(width) {}

    [[nodiscard]] bool writeOutput(const QByteArray &bytes) override
    {
        if (outputFails)
            return false;
        output += bytes;
        return true;
    }
    void writeError(const QByteArray &bytes) override { error += bytes; }
    [[nodiscard]] int outputWidth() const override { return 0; }
    [[nodiscard]] int errorWidth() const override { return m_width; }

    QByteArray output;
    QByteArray error;
    bool outputFails = false;

private:
    int m_width;
};

} // namespace Quorlin
