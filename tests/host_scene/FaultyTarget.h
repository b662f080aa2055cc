#pragma once
#include "scene/files/SaveTarget.h"

#include <functional>
#include <memory>

// A save that goes wrong at a chosen step. Steps are the opening, every write and seek of the
// device, the sync and the commit, counted from 0.
class Steps {
public:
    // Called with the number of each step; true makes the step fail.
    explicit Steps(std::function<bool(int)> fails) : fails_(std::move(fails)) {}
    bool failsNow() { return fails_(count_++); }
    int count() const { return count_; }

private:
    std::function<bool(int)> fails_;
    int count_ = 0;
};

class FaultyDevice : public QIODevice {
public:
    FaultyDevice(QIODevice& inner, Steps& steps) : inner_(inner), steps_(steps) {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    bool seek(qint64 position) override {
        if (steps_.failsNow()) {
            setErrorString(QStringLiteral("Injected failure of seek"));
            return false;
        }
        return QIODevice::seek(position) && inner_.seek(position);
    }
    qint64 size() const override { return inner_.size(); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 count) override {
        if (steps_.failsNow()) {
            setErrorString(QStringLiteral("No space left on device"));
            inner_.write(bytes, count / 2); // a full disk takes some of it
            return -1;
        }
        return inner_.write(bytes, count);
    }

private:
    QIODevice& inner_;
    Steps& steps_;
};

class FaultyTarget : public host::SaveTarget {
public:
    FaultyTarget(const QString& path, Steps& steps)
        : inner_(host::makeFileTarget(path)), steps_(steps) {}

    bool open() override {
        if (steps_.failsNow() || !inner_->open())
            return false;
        device_ = std::make_unique<FaultyDevice>(inner_->device(), steps_);
        return true;
    }
    QIODevice& device() override { return *device_; }
    bool sync() override { return !steps_.failsNow() && inner_->sync(); }
    bool commit() override { return !steps_.failsNow() && inner_->commit(); }
    void discard() override { inner_->discard(); }
    QString errorString() const override { return QStringLiteral("Injected failure"); }

private:
    std::unique_ptr<host::SaveTarget> inner_;
    Steps& steps_;
    std::unique_ptr<FaultyDevice> device_;
};
