#include "../random_child.h"

namespace pelvaro {

ChildsEnd inChild(const std::function<std::string()>& piece, unsigned) { return {true, piece()}; }

bool childrenCanCrash() { return false; }

}  // namespace pelvaro
