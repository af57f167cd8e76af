// The editor's client and its PCB server: where the library finds factories, options and dialogs.
#pragma once

#include "Interfaces/Board.h"
#include "Interfaces/Copper.h"
#include "Interfaces/Teardrops.h"

namespace Ketril {

// Ready layer sets and the factory of new ones.
class IPCB_LayerSetUtils : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_LayerSetUtils"};
  // `layers` is a new set each time, for the caller to change.
  virtual Status CreateLayerSet(TLayerPartitionSet partitions, Ref<IPCB_LayerSet>& layers) noexcept = 0;
};

// Settings of the editor that hold for all boards.
class IPCB_SystemOptions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_SystemOptions"};
  KETRIL_READ(std::int32_t, ShovePassLimit);  // after how many waves a shove of components ends
};

// The server "PCB".
class IPCB_ServerInterface : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_ServerInterface"};
  // A new object of the kind, on no board; empty for a kind that cannot be made alone. The two integers are
  // reserved and 0.
  virtual Status PCBObjectFactory(TObjectId kind, std::int32_t reserved1, std::int32_t reserved2,
                                  Ref<IPCB_Primitive>& primitive) noexcept = 0;
  // Empty when the host has none: then the library's own are used.
  KETRIL_READ(Ref<IPCB_LayerSetUtils>, LayerSetUtils);
  // A new area without contours.
  virtual Status CreateGeometricPolygon(Ref<IPCB_GeometricPolygon>& area) noexcept = 0;
  // A new maker of outlines.
  virtual Status CreateContourMaker(Ref<IPCB_ContourMaker>& maker) noexcept = 0;
  // The dialog of the teardrop options; `accepted` is false when the user cancels it.
  virtual Status EditTeardropOptions(TTeardropOptionsEx& options, bool& accepted) noexcept = 0;
  // The same of the older builder.
  virtual Status EditLegacyTeardropOptions(TTearDropOptions& options, bool& accepted) noexcept = 0;
  KETRIL_READ(Ref<IPCB_SystemOptions>, SystemOptions);
};

// Questions that the host shows in its own manner.
class IDialogService : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IDialogService"};
  // Two buttons, Yes and No.
  virtual Status ConfirmYesNo(const std::u16string& text, bool& yes) noexcept = 0;
  // One button, OK. A carriage return ends a line of the text.
  virtual Status ShowError(const std::u16string& text) noexcept = 0;
  virtual Status ShowWarning(const std::u16string& text) noexcept = 0;
};

class IClient : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IClient"};
  // Empty when there is no such server.
  virtual Status GetServerByName(const std::u16string& name, Ref<IInterface>& server) noexcept = 0;
  // Empty when the host shows no dialogs of its own.
  KETRIL_READ(Ref<IDialogService>, DialogService);
  KETRIL_READ(bool, InTestMode);
  virtual Status WriteLog(const std::u16string& line) noexcept = 0;
  // A value of the editor's options file; `found` is false, and the value untouched, when it is not there.
  virtual Status ReadOption(const std::u16string& section, const std::u16string& name, std::u16string& value,
                            bool& found) noexcept = 0;
  virtual Status WriteOption(const std::u16string& section, const std::u16string& name,
                             const std::u16string& value) noexcept = 0;
  // Runs a command of the editor by name. The parameters are pairs Name=Value, separated by |:
  // "Client:OpenDocument" opens the file `FileName`, as the kind that `DocumentType` says.
  virtual Status RunProcess(const std::u16string& name, const std::u16string& parameters) noexcept = 0;
  // Around each shove of components, which the user sees as one change.
  virtual Status BeginShove() noexcept = 0;
  virtual Status EndShove() noexcept = 0;
};

// The entry of the module "Ketril.dll" by which the library finds the client; null when there is none.
using ClientAPI_GetClient = IClient* (*)();
inline constexpr const char* kModule_Ketril = "Ketril.dll";
inline constexpr const char* kEntry_GetClient = "ClientAPI_GetClient";

// Further entries of that module: services for file names. The first puts an extension, given without its
// dot, in the place of the name's own; the second gives the name without its folders.
using ClientAPI_ForceFileNameExtension = std::u16string (*)(const std::u16string& file_name,
                                                            const std::u16string& extension);
using ClientAPI_ExtractWholeFileNameFromPath = std::u16string (*)(const std::u16string& path);
inline constexpr const char* kEntry_ForceFileNameExtension = "ClientAPI_ForceFileNameExtension";
inline constexpr const char* kEntry_ExtractWholeFileName = "ClientAPI_ExtractWholeFileNameFromPath";

}  // namespace Ketril
