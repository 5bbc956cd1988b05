#include "reading/ReadingOrder.h"

#include "reading/Columns.h"
#include "reading/Rows.h"
#include "reading/SidePanels.h"

namespace brindlecam {

namespace {

void readPart(const std::vector<Fragment>& part, QStringList& lines, StopRequest stop)
{
    const std::vector<Row> all = rows(part);
    for (std::size_t i = 0; i < all.size();) {
        stop.check();
        if (const auto run = Columns::runAt(all, i)) {
            // A side may be columns again.
            readPart(run->left, lines, stop);
            readPart(run->right, lines, stop);
            i = run->end;
        } else {
            lines << all[i].text();
            ++i;
        }
    }
}

} // namespace

QStringList readingOrder(const std::vector<Fragment>& fragments, StopRequest stop)
{
    QStringList lines;
    for (const std::vector<Fragment>& part : SidePanels::parts(fragments))
        readPart(part, lines, stop);
    return lines;
}

} // namespace brindlecam
