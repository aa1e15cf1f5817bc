#include "apps/varnelle/HandMoves.h"

namespace Varnelle {

void moveByHand(ReadThrough& reading, ScreenCommand command, double time) {
    switch (command) {
        case ScreenCommand::lineUp: reading.moveLines(-1, time); break;
        case ScreenCommand::lineDown: reading.moveLines(1, time); break;
        case ScreenCommand::paragraphUp: reading.moveParagraphs(-1, time); break;
        case ScreenCommand::paragraphDown: reading.moveParagraphs(1, time); break;
        case ScreenCommand::chapterUp: reading.moveChapters(-1, time); break;
        case ScreenCommand::chapterDown: reading.moveChapters(1, time); break;
        default: break;
    }
}

}  // namespace Varnelle
