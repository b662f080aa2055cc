#pragma once

class MSpace {
public:
    enum Space {
        kInvalid,
        kTransform,
        kPreTransform,
        kPostTransform,
        kWorld,
        kObject = kPreTransform,
        kLast = kWorld
    };
};
