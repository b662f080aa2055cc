#pragma once

#include "app/Options.h"

#include <memory>
#include <string>

namespace host {

class MainWindow;
class Replay;

/// One run of vellum-host from start to exit code.
class Program {
public:
    explicit Program(Options options);
    ~Program();

    int run(int argc, char** argv);

private:
    int runBatch(int argc, char** argv);
    int runWindow(int argc, char** argv);

    /// Plug-ins, scene and scripts; false when a step failed, which has been reported.
    bool prepare();
    void act();
    void takePicture();
    void quit(int code, bool force);
    void finish(int code);

    Options options_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<Replay> replay_;
    bool quitAsked_ = false;
    int code_ = 0;
};

} // namespace host
