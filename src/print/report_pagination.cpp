#include "print/report_pagination.h"

namespace sonalyx {

std::vector<ReportPagination::Page> ReportPagination::Paginate(
    const std::vector<std::unique_ptr<ReportBlock>>& blocks, const QRectF& column) {
    std::vector<Page> pages(1);
    const double width = column.width();
    double y = column.top();
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const ReportBlock& block = *blocks[i];
        const double height = block.Height(width);
        double needed = height;
        // A chain of headings stays together with the first block that is not one.
        for (std::size_t next = i; next + 1 < blocks.size() && blocks[next]->KeepWithNext();
             ++next) {
            needed += blocks[next]->SpaceAfter() + blocks[next + 1]->Height(width);
        }
        if (!pages.back().empty() && y + needed > column.bottom()) {
            pages.emplace_back();
            y = column.top();
        }
        pages.back().push_back({&block, QRectF(column.left(), y, width, height)});
        y += height + block.SpaceAfter();
    }
    return pages;
}

}  // namespace sonalyx
