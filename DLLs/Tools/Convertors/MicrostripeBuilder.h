// Selected tracks that meet at right angles become copper regions with mitred bends.
//
// At each such corner a line at 45 degrees cuts the outer corner off and another one fills the inner corner;
// free ends are cut square at the track's end point. All the tracks of a net and layer that hang together
// this way give one outline, and are taken off the board. An outline has no holes: tracks in a closed ring
// give the ring with all that it encloses.
#pragma once

#include <memory>
#include <vector>

#include "DLLs/Tools/Convertors/Microstripe.h"
#include "DLLs/Tools/Geometry/AbstractPolygon.h"
#include "Interfaces/Microstrip.h"

namespace Ketril::Tools {

// The tool: what is selected, net by net in the order of the selection; objects of no net count as one net.
// Runs in an open object scope. Nothing happens without settings, or when neither of them is from 0 to below
// 1; with one that is, the other one is used as it is. Objects that are no tracks have no effect.
//
// Raises EHostError. What was put on the board stays, and the tracks that went into outlines are taken off
// it.
void MakeMicrostripe(const Ref<IPCB_Board>& ABoard, const TMicrostripeSettings* ASettings);

using IInterfaceList = std::vector<Ref<IPCB_Primitive>>;

// The same for the objects of one net; nothing without a list. A track that meets no other at a right angle
// stays as it is. Of three or more that end at one point, each of the later ones is joined with the first
// one.
void MakeMicrostripes(const Ref<IPCB_Board>& ABoard, const TMicrostripeSettings& ASettings,
                      const IInterfaceList* AList);

// Makes the bend where the two meet, on both outlines. They meet at a right angle when their directions, from
// the first stored end to the second, are 90 degrees apart, or up to 90.99; for others, and for a track of no
// length, nothing but the outlines is made.
void JoinMicrostripes(TMicrostripe& AThis, TMicrostripe& AOther, double AOutsideMiter, double AInsideMiter);

// The outline and the polygon as one. Where that is more than one outline, the polygon becomes a region, and
// the result is the outline alone.
std::unique_ptr<TAbstractPolygon> MergeIntoPolygon(TBoard* ABoard, const TMicrostripe& AMicrostripe,
                                                   std::unique_ptr<TAbstractPolygon> APolygon);

// Puts a region on the board; nothing for a polygon without area.
void CreateRegionFromPolygon(TBoard* ABoard, TV7_Layer ALayer, TNet* ANet, const TAbstractPolygon& APolygon);

}  // namespace Ketril::Tools
