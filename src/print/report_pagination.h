#pragma once

#include <QRectF>
#include <memory>
#include <vector>

#include "print/report_block.h"

namespace sonalyx {

// Lays blocks down the text column page after page: a block that does not fit below the
// last one starts a new page, and a heading goes with the block after it.
class ReportPagination {
  public:
    struct Placed {
        const ReportBlock* block;
        QRectF rect;
    };
    using Page = std::vector<Placed>;

    static std::vector<Page> Paginate(const std::vector<std::unique_ptr<ReportBlock>>& blocks,
                                      const QRectF& column);
};

}  // namespace sonalyx
