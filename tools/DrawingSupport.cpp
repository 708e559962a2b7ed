#include "DrawingSupport.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "GeoJsonDrawing.h"
#include "TableFiles.h"
#include "platform/Gdi.h"
#include "platform/StdStr.h"

namespace vantrel1::cli {

bool CommandLine::Scan(const std::vector<std::string>& options, std::size_t positionals, const char* usage) {
  for (int i = 0; i < m_argc; ++i) {
    const std::string arg = m_argv[i];
    if (arg.size() < 2 || arg.compare(0, 2, "--") != 0) {
      m_positionals.push_back(arg);
      continue;
    }
    bool known = false;
    for (const std::string& o : options) known = known || o == arg;
    if (!known) {
      Fail(kUsageError, "unknown option '" + arg + "'");
      return false;
    }
    if (i + 1 >= m_argc) {
      Fail(kUsageError, "option " + arg + " needs a value");
      return false;
    }
    m_options.emplace_back(arg, m_argv[++i]);
  }
  if (m_positionals.size() != positionals) {
    std::fprintf(stderr, "usage: vantrel1 %s %s\n", m_command, usage);
    return false;
  }
  return true;
}

const char* CommandLine::Option(const std::string& name) const {
  const char* value = nullptr;
  for (const auto& [key, v] : m_options)
    if (key == name) value = v;  // the last one given wins, as in most programs
  return value;
}

int CommandLine::Fail(int code, const std::string& message) const {
  std::fprintf(stderr, "vantrel1 %s: %s\n", m_command, message.c_str());
  return code;
}

namespace {

std::optional<double> ParseNumber(const char* text) {
  if (!text || !*text) return std::nullopt;
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (*end != '\0' || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace

std::optional<double> ParseDpi(const char* text) {
  const std::optional<double> dpi = ParseNumber(text);
  if (!dpi || *dpi < kMinDpi || *dpi > kMaxDpi) return std::nullopt;
  return dpi;
}

std::optional<COLORREF> ParseColorOption(const char* text) {
  if (!text) return std::nullopt;
  const std::string value = text[0] == '#' ? std::string(text) : "#" + std::string(text);
  return ParseHexColor(value);
}

std::optional<int> ParseIntOption(const char* text, int low, int high) {
  const std::optional<double> value = ParseNumber(text);
  if (!value || *value != std::trunc(*value) || *value < low || *value > high) return std::nullopt;
  return static_cast<int>(*value);
}

namespace {

QtMessageHandler g_qtHandler = nullptr;

// Without a desktop session Qt warns that it has no runtime directory; the program never
// uses one, and the warning would only bury its own messages.
void QuietQtMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtWarningMsg && message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
  if (g_qtHandler)
    g_qtHandler(type, context, message);
  else
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

DrawingApplication::DrawingApplication() {
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  g_qtHandler = qInstallMessageHandler(QuietQtMessages);
  m_app = std::make_unique<QGuiApplication>(m_argc, m_argv);
}

DrawingApplication::~DrawingApplication() = default;

bool LoadLineTable(CLineTypeTable& table, CVantrelAppBaseX& app, const char* tableFile, std::string& error) {
  if (!tableFile) {
    // The built-in sets report 0: the user line types did not come from a file.
    table.FromFile(&app, nullptr, nullptr);
    if (table.m_nSystemLines == CLineTypeTable::kSystemLines && table.m_nUserLines > 0) return true;
    error = "the built-in line types cannot be loaded";
    return false;
  }
  const std::optional<TableForm> form = FormOf(tableFile);
  if (!form) {
    error = std::string(tableFile) + ": unknown extension (use .lin, .xml or .vlt)";
    return false;
  }
  if (!IsReadable(tableFile)) {
    error = std::string(tableFile) + ": cannot be read";
    return false;
  }
  const std::string why = Load(*form, table, CStdStrW::FromUtf8(tableFile));
  if (why.empty()) return true;
  error = std::string(tableFile) + ": not a line type table: " + why;
  return false;
}

namespace {

std::string PageSize(const LogicalWindow& window, double dpi) {
  char text[96];
  std::snprintf(text, sizeof text, "%.0f x %.0f mm at %.0f dpi", window.Width() / kDefaultUnitsPerMm,
                window.Height() / kDefaultUnitsPerMm, dpi);
  return text;
}

bool FitsAnImage(const LogicalWindow& window, double dpi) {
  const QSize size = PageMapping(window, kDefaultUnitsPerMm, dpi).DeviceSize();
  return !size.isEmpty() && size.width() <= OutputSurface::kMaxImageSide &&
         size.height() <= OutputSurface::kMaxImageSide &&
         static_cast<long long>(size.width()) * size.height() <= OutputSurface::kMaxImagePixels;
}

}  // namespace

std::unique_ptr<OutputSurface> OpenOutput(const std::string& path, const LogicalWindow& window, double dpi,
                                          std::string& error) {
  const QString file = QString::fromStdString(path);
  const std::optional<OutputSurface::Format> format = OutputSurface::FormatOf(file);
  if (!format) {
    error = path + ": the output must be a .png, .pdf or .svg file";
    return nullptr;
  }
  if (*format == OutputSurface::Format::Png && !FitsAnImage(window, dpi)) {
    error = path + ": the page (" + PageSize(window, dpi) +
            ") is too large for an image; lower --dpi or write a .pdf or .svg";
    return nullptr;
  }
  std::unique_ptr<OutputSurface> surface = OutputSurface::Open(file, window, dpi);
  if (!surface) error = path + ": cannot be written (" + PageSize(window, dpi) + ")";
  return surface;
}

LOGFONTW LabelFont(int emHeight, int weight) {
  LOGFONTW font{};
  font.lfHeight = -emHeight;
  font.lfWeight = weight;
  const std::u16string face = u"DejaVu Sans";
  std::copy(face.begin(), face.end(), font.lfFaceName);
  return font;
}

void DrawLabel(HDC dc, int x, int y, std::u16string_view text, const LOGFONTW& font, COLORREF color, UINT align) {
  HFONT handle = CreateFontIndirectW(&font);
  HGDIOBJ previousFont = SelectObject(dc, handle);
  const COLORREF previousColor = SetTextColor(dc, color);
  const int previousMode = SetBkMode(dc, TRANSPARENT);
  const UINT previousAlign = SetTextAlign(dc, align);
  TextOutW(dc, x, y, text.data(), static_cast<int>(text.size()));
  SetTextAlign(dc, previousAlign);
  SetBkMode(dc, previousMode);
  SetTextColor(dc, previousColor);
  SelectObject(dc, previousFont);
  DeleteObject(handle);
}

}  // namespace vantrel1::cli
