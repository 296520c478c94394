#include "store/RowSalvage.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace brindle {
namespace {

class Salvage {
public:
    Salvage(const DatabasePages& pages, const SavedRowSink& sink)
        : pages_(pages), sink_(sink), isClaimed_(std::size_t{pages.count()} + 1) {}

    std::vector<SalvagedTable> run() {
        const auto roots = findRoots();
        std::vector<SalvagedTable> salvaged;
        for (const SavedTable& table : savedTables()) {
            salvaged.push_back({.table = &table});
            const auto root = roots.find(table.name);
            if (root == roots.end())
                salvaged.back().isListed = false;
            else
                takeTree(root->second, salvaged.back());
        }
        claimFreePages();
        takeStrayPages(salvaged);
        return salvaged;
    }

private:
    /// A page's rows that can be its table's.
    struct PageRows {
        std::vector<SavedRow> rows;
        std::vector<PageNumber> overflows;
        std::size_t refused = 0;
        bool isPageSound = true;

        [[nodiscard]] bool areMostAccepted() const { return rows.size() >= refused; }
    };

    [[nodiscard]] bool isFree(PageNumber number) const {
        return number >= 1 && number <= pages_.count() && !isClaimed_[number];
    }

    /// What the cell holds, with the pages that it goes on in; nothing when those are not to be had.
    std::optional<StoredRow> rowOf(const PageBytes& page, const BTreePage::Cell& cell,
                                   std::vector<PageNumber>& overflows) const {
        const std::uint64_t inFile = std::uint64_t{pages_.count()} * pages_.pageSize();
        if (cell.payloadSize > inFile) return {};
        const auto begin = page.begin() + static_cast<std::ptrdiff_t>(cell.payloadAt);
        PageBytes payload(begin, begin + static_cast<std::ptrdiff_t>(cell.localSize));
        std::vector<PageNumber> chain;
        for (PageNumber next = cell.overflow; payload.size() < cell.payloadSize;) {
            const bool isNew = std::ranges::find(chain, next) == chain.end() &&
                               std::ranges::find(overflows, next) == overflows.end();
            if (!isFree(next) || !isNew) return {};
            chain.push_back(next);
            const PageBytes more = pages_.page(next);
            next = static_cast<PageNumber>(bigEndian(more, 0, 4));
            const auto wanted = std::min<std::uint64_t>(more.size() - 4, cell.payloadSize - payload.size());
            payload.insert(payload.end(), more.begin() + 4,
                           more.begin() + 4 + static_cast<std::ptrdiff_t>(wanted));
        }
        auto row = parseRow(payload);
        if (row) overflows.insert(overflows.end(), chain.begin(), chain.end());
        return row;
    }

    PageRows rowsOf(const PageBytes& page, const BTreePage& parsed, const SavedTable& table) const {
        PageRows found{.refused = parsed.refused, .isPageSound = parsed.isSound};
        if (!parsed.holdsRows()) return found;
        for (const BTreePage::Cell& cell : parsed.cells) {
            auto row = rowOf(page, cell, found.overflows);
            auto accepted = row ? table.accept(cell.rowID, std::move(*row)) : std::nullopt;
            if (accepted)
                found.rows.push_back(std::move(*accepted));
            else
                ++found.refused;
        }
        return found;
    }

    void take(PageNumber number, const PageRows& found, SalvagedTable& salvaged) {
        isClaimed_[number] = true;
        for (const PageNumber overflow : found.overflows) isClaimed_[overflow] = true;
        salvaged.refusedRows += found.refused;
        if (!found.isPageSound) ++salvaged.damagedPages;
        for (const SavedRow& row : found.rows) sink_(*salvaged.table, row);
    }

    void takeTree(PageNumber root, SalvagedTable& salvaged) {
        std::vector<PageNumber> ahead{root};
        while (!ahead.empty()) {
            const PageNumber number = ahead.back();
            ahead.pop_back();
            const PageBytes page = isFree(number) ? pages_.page(number) : PageBytes();
            const auto parsed = BTreePage::parse(page, number);
            if (!parsed || parsed->isOfTable() != salvaged.table->hasRowIDs) {
                ++salvaged.damagedPages;
                continue;
            }
            const PageRows found = rowsOf(page, *parsed, *salvaged.table);
            if (!found.areMostAccepted()) {  // what led here was damaged, or all that is here is
                ++salvaged.damagedPages;
                continue;
            }
            take(number, found, salvaged);
            if (parsed->isLeaf()) continue;
            for (const BTreePage::Cell& cell : parsed->cells) ahead.push_back(cell.leftChild);
            ahead.push_back(parsed->rightChild);
        }
    }

    /// Where the tables begin, as far as the list of them can be read.
    std::map<std::string, PageNumber> findRoots() {
        std::map<std::string, PageNumber> roots;
        std::vector<PageNumber> ahead{1};
        while (!ahead.empty()) {
            const PageNumber number = ahead.back();
            ahead.pop_back();
            const PageBytes page = isFree(number) ? pages_.page(number) : PageBytes();
            const auto parsed = BTreePage::parse(page, number);
            if (!parsed || !parsed->isOfTable()) continue;
            std::size_t tables = 0;
            for (const BTreePage::Cell& cell : parsed->cells) {
                if (!parsed->isLeaf()) {
                    ahead.push_back(cell.leftChild);
                    continue;
                }
                std::vector<PageNumber> overflows;
                const auto row = rowOf(page, cell, overflows);
                if (!row || row->size() != 5) continue;
                const auto* type = std::get_if<std::string>(&(*row)[0]);
                const auto* name = std::get_if<std::string>(&(*row)[1]);
                const auto* root = std::get_if<std::int64_t>(&(*row)[3]);
                if (type == nullptr || name == nullptr || root == nullptr) continue;
                ++tables;
                for (const PageNumber overflow : overflows) isClaimed_[overflow] = true;
                if (*type == "table" && *root > 1 && *root <= pages_.count())
                    roots.emplace(*name, static_cast<PageNumber>(*root));
            }
            if (!parsed->isLeaf()) ahead.push_back(parsed->rightChild);
            isClaimed_[number] = number == 1 || !parsed->isLeaf() || tables > 0;
        }
        return roots;
    }

    /// What lies on pages out of use was deleted. Their list counts only as a whole: a damaged one may lead
    /// anywhere.
    void claimFreePages() {
        const PageBytes header = pages_.page(1);
        constexpr std::size_t firstAt = 32;
        constexpr std::size_t countAt = 36;
        if (header.size() < countAt + 4) return;
        std::vector<PageNumber> unused;
        for (auto trunk = static_cast<PageNumber>(bigEndian(header, firstAt, 4)); trunk != 0;) {
            const PageBytes page = isFree(trunk) ? pages_.page(trunk) : PageBytes();
            const std::uint64_t leaves = page.empty() ? 0 : bigEndian(page, 4, 4);
            if (page.empty() || leaves > page.size() / 4 - 2 || unused.size() > pages_.count()) return;
            unused.push_back(trunk);
            for (std::uint64_t i = 0; i < leaves; ++i)
                unused.push_back(static_cast<PageNumber>(bigEndian(page, 8 + 4 * i, 4)));
            trunk = static_cast<PageNumber>(bigEndian(page, 0, 4));
        }
        if (unused.size() != bigEndian(header, countAt, 4)) return;
        for (const PageNumber number : unused)
            if (isFree(number)) isClaimed_[number] = true;
    }

    /// Of a table that was found whole there is nothing to find any more.
    void takeStrayPages(std::vector<SalvagedTable>& salvaged) {
        std::vector<SalvagedTable*> lacking;
        for (SalvagedTable& table : salvaged)
            if (table.damagedPages > 0 || !table.isListed) lacking.push_back(&table);
        for (PageNumber number = 1; !lacking.empty() && number <= pages_.count(); ++number) {
            if (!isFree(number)) continue;
            const PageBytes page = pages_.page(number);
            const auto parsed = BTreePage::parse(page, number);
            if (!parsed || !parsed->holdsRows()) continue;
            PageRows best;
            SalvagedTable* owner = nullptr;
            for (SalvagedTable* table : lacking) {
                if (table->table->hasRowIDs != parsed->isOfTable()) continue;
                PageRows found = rowsOf(page, *parsed, *table->table);
                if (!found.areMostAccepted() || found.rows.size() <= best.rows.size()) continue;
                best = std::move(found);
                owner = table;
            }
            if (owner != nullptr) take(number, best, *owner);
        }
    }

    const DatabasePages& pages_;
    const SavedRowSink& sink_;
    std::vector<bool> isClaimed_;
};

}  // namespace

std::vector<SalvagedTable> salvageRows(const DatabasePages& pages, const SavedRowSink& sink) {
    return Salvage(pages, sink).run();
}

}  // namespace brindle
