#include "worksheet/dependency_graph.h"

#include <algorithm>
#include <array>
#include <bit>
#include <unordered_map>
#include <vector>

namespace kelvrane {

namespace {

/// Ranges are kept in tiles of 2^n rows by 2^m columns, each in tiles as large as itself, so that
/// four hold it at most; a whole column takes no more room than a cell. A cell is looked up in one
/// tile of each size that is in use.
struct TileSize {
    int rowBits = 0;
    int columnBits = 0;
    bool operator==(const TileSize&) const = default;
};

int bitsFor(int count) {
    return std::bit_width(static_cast<unsigned>(count - 1));
}

TileSize tileSizeOf(const CellRange& range) {
    return {bitsFor(range.rows()), bitsFor(range.columns())};
}

quint64 tileKey(TileSize size, int row, int column) {
    const auto tileRow = static_cast<quint64>(row >> size.rowBits);
    const auto tileColumn = static_cast<quint64>(column >> size.columnBits);
    return static_cast<quint64>(size.rowBits) << 56 | static_cast<quint64>(size.columnBits) << 48 |
           tileRow << 24 | tileColumn;
}

struct KeyHash {
    size_t operator()(quint64 key) const noexcept {
        key *= 0x9e3779b97f4a7c15U;
        return static_cast<size_t>(key ^ (key >> 32));
    }
};

quint64 cellKey(CellAddress cell) {
    return static_cast<quint64>(cell.row) << 32 | static_cast<quint64>(cell.column);
}

CellRange insideSheet(const CellRange& range) {
    return {{std::clamp(range.first.row, 0, SheetRows - 1),
             std::clamp(range.first.column, 0, SheetColumns - 1)},
            {std::clamp(range.last.row, 0, SheetRows - 1),
             std::clamp(range.last.column, 0, SheetColumns - 1)}};
}

} // namespace

struct DependencyGraph::Data {
    struct Node {
        CellAddress cell;
        QList<CellRange> ranges;
        bool isFormula = false;
        // Of the walk with this number:
        quint64 walk = 0;
        int missing = 0; ///< what it needs that has no place in the order yet
    };
    struct Reader {
        int node;
        CellRange range;
    };
    struct UsedSize {
        TileSize size;
        qsizetype count;
    };

    std::vector<Node> nodes;
    std::vector<int> freeNodes;
    std::unordered_map<quint64, int, KeyHash> nodeOfCell;
    std::unordered_map<quint64, std::vector<Reader>, KeyHash> tiles;
    std::vector<UsedSize> sizes;
    quint64 walk = 0;

    int find(CellAddress cell) const {
        const auto found = nodeOfCell.find(cellKey(cell));
        return found == nodeOfCell.end() ? -1 : found->second;
    }

    int nodeFor(CellAddress cell) {
        if (const int known = find(cell); known >= 0)
            return known;
        if (freeNodes.empty()) {
            freeNodes.push_back(static_cast<int>(nodes.size()));
            nodes.emplace_back();
        }
        const int node = freeNodes.back();
        freeNodes.pop_back();
        nodes[static_cast<size_t>(node)] = {.cell = cell, .isFormula = true};
        nodeOfCell.emplace(cellKey(cell), node);
        return node;
    }

    template <typename Visitor>
    static void eachTile(const CellRange& range, Visitor visitor) {
        const TileSize size = tileSizeOf(range);
        const int rowStep = 1 << size.rowBits;
        const int columnStep = 1 << size.columnBits;
        for (int row = range.first.row & -rowStep; row <= range.last.row; row += rowStep)
            for (int column = range.first.column & -columnStep; column <= range.last.column;
                 column += columnStep)
                visitor(tileKey(size, row, column));
    }

    void countSize(const CellRange& range, int by) {
        const TileSize size = tileSizeOf(range);
        auto used = std::ranges::find(sizes, size, &UsedSize::size);
        if (used == sizes.end())
            used = sizes.insert(used, {size, 0});
        used->count += by;
        if (used->count == 0)
            sizes.erase(used);
    }

    void link(int node, const CellRange& range) {
        eachTile(range, [&](quint64 key) { tiles[key].push_back({node, range}); });
        countSize(range, 1);
    }

    void unlink(int node) {
        for (const CellRange& range : nodes[static_cast<size_t>(node)].ranges) {
            eachTile(range, [&](quint64 key) {
                const auto tile = tiles.find(key);
                if (tile == tiles.end())
                    return;
                std::erase_if(tile->second, [&](const Reader& r) { return r.node == node; });
                if (tile->second.empty())
                    tiles.erase(tile);
            });
            countSize(range, -1);
        }
    }

    /// Visits the formulas that read a cell, once for each of their ranges that holds it.
    template <typename Visitor>
    void eachReader(CellAddress cell, Visitor visitor) const {
        for (const UsedSize& used : sizes) {
            const auto tile = tiles.find(tileKey(used.size, cell.row, cell.column));
            if (tile == tiles.end())
                continue;
            for (const Reader& reader : tile->second)
                if (reader.range.contains(cell))
                    visitor(reader.node);
        }
    }

    /// Puts formulas into an order; reached grows by what they reach.
    Order ordered(std::vector<int> reached);
    void reach(int node, std::vector<int>& reached) {
        Node& one = nodes[static_cast<size_t>(node)];
        if (one.walk == walk)
            return;
        one.walk = walk;
        one.missing = 0;
        reached.push_back(node);
    }
};

DependencyGraph::Order DependencyGraph::Data::ordered(std::vector<int> reached) {
    const auto node = [&](int index) -> Node& { return nodes[static_cast<size_t>(index)]; };
    for (size_t i = 0; i < reached.size(); ++i)
        eachReader(node(reached[i]).cell, [&](int reader) {
            reach(reader, reached);
            ++node(reader).missing;
        });

    std::vector<int> ready;
    std::ranges::copy_if(reached, std::back_inserter(ready),
                         [&](int index) { return node(index).missing == 0; });
    for (size_t i = 0; i < ready.size(); ++i)
        eachReader(node(ready[i]).cell, [&](int reader) {
            if (--node(reader).missing == 0)
                ready.push_back(reader);
        });

    Order order;
    order.cells.reserve(static_cast<qsizetype>(ready.size()));
    for (const int index : ready)
        order.cells.append(node(index).cell);
    for (const int index : reached)
        if (node(index).missing > 0)
            order.cycles.append(node(index).cell);
    return order;
}

DependencyGraph::DependencyGraph() : m_data(std::make_unique<Data>()) {}
DependencyGraph::~DependencyGraph() = default;

void DependencyGraph::clear() {
    *m_data = {};
}

void DependencyGraph::setPrecedents(CellAddress cell, const QList<CellRange>& ranges) {
    const int node = m_data->nodeFor(cell);
    m_data->unlink(node);
    QList<CellRange>& known = m_data->nodes[static_cast<size_t>(node)].ranges;
    known.clear();
    for (const CellRange& range : ranges) {
        known.append(insideSheet(range));
        m_data->link(node, known.last());
    }
}

void DependencyGraph::remove(CellAddress cell) {
    const int node = m_data->find(cell);
    if (node < 0)
        return;
    m_data->unlink(node);
    m_data->nodes[static_cast<size_t>(node)] = {};
    m_data->nodeOfCell.erase(cellKey(cell));
    m_data->freeNodes.push_back(node);
}

DependencyGraph::Order DependencyGraph::affectedBy(const QList<CellAddress>& changed) const {
    ++m_data->walk;
    std::vector<int> reached;
    for (const CellAddress cell : changed) {
        if (const int node = m_data->find(cell); node >= 0)
            m_data->reach(node, reached);
        else
            m_data->eachReader(cell, [&](int reader) { m_data->reach(reader, reached); });
    }
    return m_data->ordered(std::move(reached));
}

DependencyGraph::Order DependencyGraph::all() const {
    ++m_data->walk;
    std::vector<int> reached;
    for (size_t i = 0; i < m_data->nodes.size(); ++i)
        if (m_data->nodes[i].isFormula)
            m_data->reach(static_cast<int>(i), reached);
    return m_data->ordered(std::move(reached));
}

} // namespace kelvrane
