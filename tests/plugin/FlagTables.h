// The flags of the four script commands as scripts know them.
#pragma once

#include <QVector>

namespace vellum::test {

/// One row: both names as scripts call them and arguments that fit; a letter for each kind:
/// u unsigned, i integer, d double, b boolean, s string.
struct Row {
    const char* shortName;
    const char* longName;
    const char* kinds = "";
    const char* fitting = "";
};

struct Table {
    const char* command;
    const char* object; ///< what stands behind the flags
    bool modes;         ///< knows -edit and -query
    QVector<Row> rows;
};

extern const Table kNode, kLayer, kFrame, kUtil;

} // namespace vellum::test
