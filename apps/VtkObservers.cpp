#include "VtkObservers.h"

#include "Interruption.h"

#include <vtkAlgorithm.h>
#include <vtkCommand.h>
#include <vtkLogger.h>
#include <vtkObjectFactory.h>

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
    return m_pCollector->getText().find("ERROR: ") != std::string::npos;
}

/// A message is "ERROR: In FILE, line NUMBER", a new line and "CLASS (ADDRESS): TEXT".
std::string VtkMessages::getFirst(const std::string& alternative) const
{
    const std::string& text = m_pCollector->getText();
    const std::string separator = "): ";
    const std::size_t separatorAt = text.find(separator);
    if (separatorAt == std::string::npos)
        return alternative;
    const std::size_t begin = separatorAt + separator.size();
    return text.substr(begin, text.find('\n', begin) - begin);
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
