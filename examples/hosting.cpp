// A process that must live on, and keeps its standard output for itself.
#include <vorn3d/Vorn_3D.h>

#include <iostream>
#include <sstream>
#include <stdexcept>

namespace
{

[[noreturn]] void throwFatal(const char* message)
{
    throw std::runtime_error(message);
}

} // namespace

int main()
{
    std::ostringstream text;
    VORN3D::setMessageStream(&text);
    VORN3D::setFatalHandler(throwFatal);

    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);
    std::cout << "the library said: " << text.str();

    try {
        triangulation.show("no/such/directory/mesh.list", nullptr);
    } catch (const std::runtime_error& error) {
        std::cout << "instead of the end: " << error.what() << '\n';
    }
}
