#include "entry.h"

namespace wsptool::explain {

const char *kind_name(Kind kind) {
    switch (kind) {
    case Kind::kWellKnown: return "well-known";
    case Kind::kApplication: return "application";
    case Kind::kShift: return "shift";
    case Kind::kCodePage: return "code-page";
    case Kind::kPduField: return "pdu";
    }
    return "?";
}

const char *fate_name(Fate fate) {
    switch (fate) {
    case Fate::kWritten: return "written";
    case Fate::kMerged: return "merged";
    case Fate::kDropped: return "dropped";
    case Fate::kShifted: return "shifted";
    case Fate::kFailed: return "failed";
    case Fate::kField: return "field";
    }
    return "?";
}

} // namespace wsptool::explain
