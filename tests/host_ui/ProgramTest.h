// vellum-host as a program, run in a folder of its own.
#pragma once

#include "support/HostProgram.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace hosttest {

class ProgramTest : public ::testing::Test {
protected:
    support::Outcome run(const QStringList& arguments, const QStringList& environment = {}) {
        return support::HostProgram(arguments, directory.path(), environment).outcome();
    }

    QString write(const QString& name, const QByteArray& text) {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    /// The lines that the program printed and that begin with "at:".
    static std::vector<std::string> marks(const std::string& out) {
        std::vector<std::string> lines;
        for (const QString& line : QString::fromStdString(out).split('\n')) {
            if (line.startsWith("at:"))
                lines.push_back(line.mid(3).toStdString());
        }
        return lines;
    }

    QTemporaryDir directory;
};

} // namespace hosttest
