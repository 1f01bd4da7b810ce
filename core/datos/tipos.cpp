#include "core/datos/tipos.hpp"

namespace tpv::datos {

const char* NombreTipo(ColType t) {
    switch (t) {
        case ColType::Integer: return "integer";
        case ColType::Double: return "double";
        case ColType::Text: return "text";
        case ColType::Date: return "date";
        case ColType::Time: return "time";
        case ColType::Flag: return "flag";
        default: return "unknown";
    }
}

bool EsNumerico(ColType t) { return t == ColType::Integer || t == ColType::Double || t == ColType::Flag; }

std::string Minusculas(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return out;
}

bool IgualesSinCaso(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x + 32);
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y + 32);
        if (x != y) return false;
    }
    return true;
}

const ColumnInfo* TableInfo::Find(std::string_view column) const {
    int i = IndexOf(column);
    return i < 0 ? nullptr : &columns[static_cast<std::size_t>(i)];
}

int TableInfo::IndexOf(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (IgualesSinCaso(columns[i].name, column)) return static_cast<int>(i);
    return -1;
}

void Catalog::Add(TableInfo table) {
    std::string key = Minusculas(table.name);
    tables_[key] = std::move(table);
}

const TableInfo* Catalog::Find(std::string_view table) const {
    auto it = tables_.find(Minusculas(table));
    return it == tables_.end() ? nullptr : &it->second;
}

std::vector<std::string> Catalog::Names() const {
    std::vector<std::string> out;
    for (const auto& [k, t] : tables_) out.push_back(t.name);
    return out;
}

}  // namespace tpv::datos
