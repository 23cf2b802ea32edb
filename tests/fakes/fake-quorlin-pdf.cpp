#include "fakes/FakeComponent.h"

int main()
{
    return Quorlin::FakeComponent().run();
}
