#pragma once
#include <array>
#include <string>

#include "core/runtime/value.hpp"

// What sells: the 30 products sold in the most units, or the 30 customers
// who bought for the most, over a period of closed sales of this shop.
namespace tpv {

inline constexpr int kFilasTop = 30;

// One place of a ranking. A place with no figure and no name is empty.
struct FilaTop {
    double cifra = 0;
    std::string nombre;
};
using TablaTop = std::array<FilaTop, kFilasTop>;

// The statement of a ranking: tipo "P" for products, any other for
// customers. Only rows of the session's shop count, so with a single shop
// only rows with an empty shop.
std::string SentenciaTop(const std::string& tipo, DateTime desde, DateTime hasta);

// The ranking in the order the database gives it, each figure with the name
// of its product ("Nombre") or customer ("Nombre Apellidos"), looked up one
// by one; one that has gone from its table stands with an empty name.
TablaTop LeerTop(const std::string& tipo, DateTime desde, DateTime hasta);

}  // namespace tpv
