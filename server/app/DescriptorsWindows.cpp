#include "Descriptors.h"

namespace server
{
int ConnectionsThatFit(int wanted, int)
{
    return wanted;
}
} // namespace server
