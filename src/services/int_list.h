// Lists of engine parameters: a TList<int> whose ints live on the heap and
// belong to the list that holds them.
#ifndef FW_SERVICES_INT_LIST_H
#define FW_SERVICES_INT_LIST_H

#include "model/t_list.h"

// A deep copy.
TList<int>* int_list_copy(const TList<int>& list);
// Equal length and equal values position by position.
bool int_list_equal(const TList<int>& left, const TList<int>& right);
// Frees the values and the list; null does nothing.
void int_list_free(TList<int>* list);

#endif
