#include "search/pstring_ref.h"

int wcstrncmp_nocase(unsigned short const* first, unsigned short const* second,
                     unsigned long limit) {
    for (unsigned long i = 0; i < limit && first[i] != 0 && second[i] != 0; ++i) {
        if (first[i] != second[i]) return first[i] > second[i] ? 1 : -1;
    }
    return 0;
}
