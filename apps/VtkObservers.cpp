#include "VtkObservers.h"

#include "Interruption.h"
#include "printable.h"

#include <vtkAlgorithm.h>
#include <vtkCommand.h>
#include <vtkLogger.h>
#include <vtkObjectFactory.h>

#include <algorithm>
#include <sstream>

namespace VORN3D::program
{

namespace
{

/// VTK's progress is a fraction of 1.
constexpr double progressScale = 1000.0;

} // namespace

class VtkMessages::Collector : public vtkOutputWindow
{
public:
    static Collector* New();
    void DisplayText(const char* text) override { m_text += text; }
    const std::string& getText() const { return m_text; }

private:
    std::string m_text;
};

vtkStandardNewMacro(VtkMessages::Collector);

VtkMessages::VtkMessages() : m_pOriginal(vtkOutputWindow::GetInstance())
{
    // The logger would print them beside the output window.
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
    vtkOutputWindow::SetInstance(m_pCollector);
}

VtkMessages::~VtkMessages()
{
    vtkOutputWindow::SetInstance(m_pOriginal);
}

bool VtkMessages::hasError() const
{
    return findError() != std::string::npos;
}

/// Where the first error begins. Readers without an object at hand call theirs generic warnings.
std::size_t VtkMessages::findError() const
{
    const std::string& text = m_pCollector->getText();
    return std::min(text.find("ERROR: In "), text.find("Generic Warning: In "));
}

/// An error is "ERROR: In FILE, line NUMBER", a new line and "CLASS (ADDRESS): TEXT" or just the text.
std::string VtkMessages::getFirstError(const std::string& alternative) const
{
    constexpr std::size_t maxSize = 100;
    if (!hasError())
        return alternative;
    std::istringstream lines(m_pCollector->getText().substr(findError()));
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    const std::string separator = "): ";
    const std::size_t separatorAt = line.find(separator);
    if (separatorAt != std::string::npos)
        line.erase(0, separatorAt + separator.size());
    return makePrintable(line, maxSize);
}

VtkProgress::VtkProgress(const std::string& label, vtkAlgorithm& algorithm)
    : m_algorithm(algorithm), m_progress(label, static_cast<std::size_t>(progressScale))
{
    algorithm.AddObserver(vtkCommand::ProgressEvent, this, &VtkProgress::update);
}

void VtkProgress::update()
{
    if (InterruptionWatch::isRequested())
        m_algorithm.SetAbortExecute(1);
    else
        m_progress.update(static_cast<std::size_t>(m_algorithm.GetProgress() * progressScale));
}

} // namespace VORN3D::program
