#ifndef BRUM_TERMS_ANNOTATION_MAP_H
#define BRUM_TERMS_ANNOTATION_MAP_H

#include <string>
#include <utility>
#include <vector>

#include "brum/terms/term.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Per term its attributes in the order in which they are to be printed: the keyword without its
/// colon, and the text of its value as SMT-LIB 2.6 writes it.
using AnnotationMap = hsh::HashMap<const Term*, std::vector<std::pair<std::string, std::string>>>;

}  // namespace brum

#endif  // BRUM_TERMS_ANNOTATION_MAP_H
