// vellum-host as a child process.
#pragma once

#include <QProcess>
#include <QStringList>

#include <string>

namespace support {

struct Outcome {
    int code = -1; ///< -1: it crashed or had to be killed
    std::string out, err;
};

class HostProgram {
public:
    /// `environment` holds names and values in turn.
    explicit HostProgram(const QStringList& arguments, const QString& workingDirectory = {},
                         const QStringList& environment = {});
    ~HostProgram(); ///< kills it if it still runs

    /// Waits until the program has printed this text; false when it ends or takes too long.
    bool prints(const std::string& text);
    void kill();      ///< at once, with no chance to tidy up
    void terminate(); ///< asks it to end
    /// Waits for its end; a program that does not end fails the test.
    Outcome outcome();

private:
    void collect();

    QProcess process_;
    Outcome outcome_;
};

} // namespace support
