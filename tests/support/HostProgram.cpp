#include "support/HostProgram.h"

#include "support/Paths.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace support {

namespace {
constexpr int longestRun = 280'000; // milliseconds, with sanitizers on a busy machine
}

HostProgram::HostProgram(const QStringList& arguments, const QString& workingDirectory,
                         const QStringList& environment) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (int i = 0; i + 1 < environment.size(); i += 2)
        variables.insert(environment.at(i), environment.at(i + 1));
    process_.setProcessEnvironment(variables);
    process_.setWorkingDirectory(workingDirectory);
    process_.start(hostPath(), arguments);
}

HostProgram::~HostProgram() {
    kill();
}

void HostProgram::collect() {
    outcome_.out += process_.readAllStandardOutput().toStdString();
    outcome_.err += process_.readAllStandardError().toStdString();
}

bool HostProgram::prints(const std::string& text) {
    QElapsedTimer timer;
    timer.start();
    while (outcome_.out.find(text) == std::string::npos) {
        if (timer.elapsed() > longestRun || process_.state() == QProcess::NotRunning)
            return false;
        process_.waitForReadyRead(100);
        collect();
    }
    return true;
}

void HostProgram::kill() {
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.kill();
    process_.waitForFinished();
}

void HostProgram::terminate() {
    process_.terminate();
}

Outcome HostProgram::outcome() {
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(longestRun)) {
        kill();
        ADD_FAILURE() << "vellum-host does not end";
    } else if (process_.exitStatus() == QProcess::NormalExit) {
        outcome_.code = process_.exitCode();
    }
    collect();
    return outcome_;
}

} // namespace support
