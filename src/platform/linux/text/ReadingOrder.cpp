#include "platform/linux/text/ReadingOrder.h"

#include "platform/linux/text/Columns.h"
#include "platform/linux/text/Rows.h"
#include "platform/linux/text/SidePanels.h"

namespace brindlecam {

namespace {

void readPart(const std::vector<Fragment>& part, QStringList& lines)
{
    const std::vector<Row> all = rows(part);
    for (std::size_t i = 0; i < all.size();) {
        if (const auto run = Columns::runAt(all, i)) {
            // A side may be columns again.
            readPart(run->left, lines);
            readPart(run->right, lines);
            i = run->end;
        } else {
            lines << all[i].text();
            ++i;
        }
    }
}

} // namespace

QStringList readingOrder(const std::vector<Fragment>& fragments)
{
    QStringList lines;
    for (const std::vector<Fragment>& part : SidePanels::parts(fragments))
        readPart(part, lines);
    return lines;
}

} // namespace brindlecam
