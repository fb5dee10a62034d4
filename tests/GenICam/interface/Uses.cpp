// SPDX-License-Identifier: Apache-2.0
// What programs that are written against the standard's headers do with them: each line is one use. That
// all of it compiles, in the oldest dialect of such programs and in ours, is the test; nothing here is ever
// run.
#include <Base/GCError.h>
#include <Base/GCException.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/PortWriteList.h>
#include <GenApi/ValueArrayAdapter.h>

#include <GenICam.h>
#include <GenICamVersion.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>

using namespace GenApi;
using namespace GenICam;

// What every use has at hand.
#define USE_NAMED(name)                                                                                      \
    void name(CNodeMapRef& m, INodeMap* nm, INode* n, IInteger* i, IFloat* f, IBoolean* b, IEnumeration* e,  \
              ICommand* c, IString* s, IRegister* r, IValue* v, IPort* p)
#define USE_NUMBERED(number) USE_NAMED(Use##number)
#define USE_AT(number) USE_NUMBERED(number)
#define USE USE_AT(__COUNTER__)

// clang-format off
USE { INodeMap* q = m._Ptr; (void)q; }
USE { if (m._Ptr) m._Ptr->Poll(1); }
USE { m._Connect(p); m._Connect(p, "Device"); }
USE { std::string t; m._LoadXMLFromString(t.c_str()); }
USE { m._SetSuppressCallbackMode(csmOff); }
USE { nm->SetSuppressCallbackMode(csmActive); }
USE { gcstring x = nm->GetDeviceName(); }
USE { CNodeWriteConcatenator* q = nm->NewNodeWriteConcatenator(); q->Add("a", (int64_t)1); q->Add("a", 1.5); q->Add("a", true); q->Add("a", "x"); }
USE { CNodeWriteConcatenatorRef q(m._NewNodeWriteConcatenator()); q._Add("A", (int64_t)5); m._ConcatenatedWrite(q); }
USE { CIntegerRef x; x.SetReference(n); }
USE { enum EE { A, B }; CEnumerationTRef<EE> x; (void)x; }
USE { CBooleanRef a; CCommandRef cc; CStringRef ss; CRegisterRef rr; CCategoryRef ca; CPortRef pp; }
USE { IReference* q = nullptr; q->SetReference(n); }
USE { enum EE { A, B }; IEnumerationT<EE>* q = nullptr; q->SetValue(A); EE z = q->GetValue(); (void)z; }
USE { CIntegerPtr x = n; x->SetValue(1); int64_t z = x->GetValue(); (void)z; }
USE { CIntegerPtr x(nm->GetNode("W")); if (IsAvailable(x) && IsReadable(x) && IsImplemented(x)) { } }
USE { CNodePtr x = n; if (!x) return; if (x) return; }
USE { CIntegerPtr x = n; int64_t z = (*x)(); z = **x; (void)z; }
USE { CIntegerPtr x = n; *x = 5; CFloatPtr y = n; *y = 5.0; CBooleanPtr bb = n; *bb = true; }
USE { CEnumerationPtr x = n; *x = "Mono8"; x->FromString("Mono8"); gcstring z = **x; z = x->ToString(); }
USE { CEnumerationPtr x = n; NodeList_t l; x->GetEntries(l); for (NodeList_t::iterator it = l.begin(); it != l.end(); it++) { CEnumEntryPtr y = *it; } }
USE { StringList_t l; e->GetSymbolics(l); for (size_t k = 0; k < l.size(); ++k) l[k].c_str(); }
USE { const gcstring_vector l; for (gcstring_vector::const_iterator it = l.begin(); it != l.end(); ++it) (*it).c_str(); }
USE { gcstring_vector l; bool z = l.contains("x"); (void)z; }
USE { CCategoryPtr x = n; FeatureList_t l; x->GetFeatures(l); for (FeatureList_t::iterator it = l.begin(); it != l.end(); ++it) { if (IsAvailable(*it)) (*it)->GetNode()->GetName(); } }
USE { FeatureList_t l; for (FeatureList_t::const_iterator it = l.begin(); it != l.end(); ++it) { IValue* q = *it; (void)q; } }
USE { NodeList_t l; std::vector<INode*> o(l.begin(), l.end()); }
USE { std::string x = std::string(n->GetName()); }
USE { std::string x; gcstring y(x.c_str()); gcstring z = x.c_str(); }
USE { gcstring a; a.find_last_of('.'); a.find_last_of("ab"); a.find_last_not_of(' '); }
USE { gcstring a; if (a.find("x") == gcstring::_npos()) {} }
USE { struct X : gcstring { size_t length() const { return 0; } }; X x; (void)x; }
USE { std::cout << n->GetName() << std::endl; }
USE { std::map<gcstring, int> q; q["a"] = 1; }
USE { printf("%s", (const char*)n->GetName()); }
USE { GENICAM_NAMESPACE::gcstring q; GENAPI_NAMESPACE::INode* w = n; (void)w; }
USE { try { } catch (const GenericException& x) { x.what(); x.GetDescription(); x.GetSourceFileName(); x.GetSourceLine(); } }
USE { std::string q; throw RUNTIME_EXCEPTION(q); }
USE { std::stringstream q; throw RUNTIME_EXCEPTION(q); }
USE { throw RUNTIME_EXCEPTION(); }
USE { throw RuntimeException("x", __FILE__, __LINE__); }
USE { CHECK_RANGE_I64(1, 0, 5, 1); CHECK_RANGE_FLT(1.0, 0.0, 5.0); }
USE { CHECK_DYNAMIC_CAST_POINTER(n); }
USE { struct X { void cb(INode*) {} } x; intptr_t h = Register(n, x, &X::cb); n->DeregisterCallback(h); }
USE { struct X { void cb(INode*) {} } x; Register(n, x, &X::cb, cbPostOutsideLock); }
USE { struct X { static void cb(INode*) {} }; n->RegisterCallback(make_NodeCallback(n, &X::cb, cbPostInsideLock)); }
USE { std::function<void(INode*)> q; CNodeCallback* k = make_NodeCallback(n, q, cbPostInsideLock); (*k)(cbPostInsideLock); }
USE { n->GetVisibility(); n->GetCachingMode(); n->GetPollingTime(); n->GetToolTip(); n->GetDescription(); n->GetDisplayName(); n->IsFeature(); n->IsStreamable(); n->GetPrincipalInterfaceType(); n->GetEventID(); n->GetDocuURL(); n->IsDeprecated(); n->GetAlias(); n->GetCastAlias(); }
USE { NodeList_t l; n->GetChildren(l, ctValueChangingChildren); }
USE { bool z = IsCacheable(n->GetCachingMode()); (void)z; }
USE { ECachingMode z = Combine(WriteThrough, NoCache); (void)z; }
USE { s->GetMaxLength(true); }
USE { std::string q; s->SetValue(q.c_str()); *s = "abc"; }
USE { int64_autovector_t l = i->GetListOfValidValues(); for (size_t k = 0; k < l.size(); ++k) { int64_t z = l[k]; (void)z; } }
USE { double_autovector_t l = f->GetListOfValidValues(false); double z = l[0]; (void)z; }
USE { CFloatPtr x = n; x.GetIntAlias(); x.GetEnumAlias(); }
USE { CSelectorPtr x = n; FeatureList_t l; x->GetSelectedFeatures(l); x->GetSelectingFeatures(l); x->IsSelector(); }
USE { INode* q = dynamic_cast<INode*>(v); q = v->GetNode(); (void)q; }
USE { CSelectorSet x(v); if (!x.IsEmpty()) { x.SetFirst(); do { x.ToString(); } while (x.SetNext()); x.Restore(); } }
USE { struct X : ISelectorDigit { bool SetFirst() override { return 0; } bool SetNext(bool) override { return 0; } void Restore() override {} gcstring ToString() override { return ""; } void GetState(CSelectorState&) override {} void GetSelectorList(FeatureList_t&, bool) override {} }; X x; (void)x; }
USE { CFeatureBag x; x.StoreToBag(nm); gcstring_vector er; x.LoadFromBag(nm, true, &er); }
USE { CFeatureBag x; std::ofstream o("x"); o << x; std::ifstream in("x"); in >> x; }
USE { CFeatureBag x; x.SetInfo("info"); const gcstring k("a"); x.SetInfo(k); }
USE { CFeatureBag x; x.PersistFeature(*v, (CSelectorSet*)0); }
USE { CFeatureBagger x; x.Bag(nm); x.UnBag(nm); }
USE { const char* q = GENAPI_PERSISTENCE_MAGIC; (void)q; }
USE { std::istringstream q; EatComments(q); }
USE { CNodeMapFactory x(ContentType_ZippedXml, "a", (size_t)1); INodeMap* q = x.CreateNodeMap(); q = x.CreateNodeMap("Dev"); (void)q; }
USE { CNodeMapFactory x; GenApi::CLock l; INodeMap* q = x.CreateNodeMap(l, "Dev"); (void)q; }
USE { CNodeMapFactory x; x.LoadAndInject(); x.IsLoaded(); x.Preprocess(); }
USE { INodeMap* q = CNodeMapFactory::CreateEmptyNodeMap(); (void)q; }
USE { CNodeMapFactory x; CNodeMapFactory::NodeStatistics_t st; x.GetNodeStatistics(st); }
USE { CNodeMapFactory x; x.ToString(); x.ApplyStyleSheet("a"); }
USE { IDestroy* q = CastToIDestroy(nm); q->Destroy(); }
USE { IDestroy* q = dynamic_cast<IDestroy*>(nm); q->Destroy(); }
USE { IDeviceInfo* q = dynamic_cast<IDeviceInfo*>(m._Ptr); (void)q; }
USE { CNodeUserDataPtr x = n; x->SetUserData((void*)1); UserData_t u = x->GetUserData(); (void)u; }
USE { struct X : IPort { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} }; X x; nm->Connect(&x, "Device"); }
USE { delete p; }
USE { std::shared_ptr<IPort> q(p); }
USE { struct X : CPortImpl { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} }; X x; nm->Connect(&x, "Device"); x.InvalidateNode(); }
USE { struct X : IPortStacked { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void Write(PORT_REGISTER_STACK_ENTRY*, size_t) override {} }; X x; nm->Connect(&x, "Device"); }
USE { CPortWriteList l; CPortRecorderPtr q = nm->GetNode("Device"); q->StartRecording(&l); q->StopRecording(); CPortReplayPtr w = nm->GetNode("Device"); w->Replay(&l); }
USE { struct D { uint32_t a; }; CTestPortStruct<D> x; nm->Connect(&x, "Device"); x.a = 1; x.MemSet(0); x.InvalidateNode(); }
USE { struct D { uint32_t a; }; CTestPortStruct<D> x(0x100); int64_t k = x.GetNumReads(); (void)k; }
USE { CChunkAdapterGeneric x(nm); SingleChunkData_t d[1]; uint8_t bu[8]; x.AttachBuffer(bu, d, 1); }
USE { CChunkAdapterGeneric x(nm); SingleChunkDataStr_t d[1]; uint8_t bu[8]; AttachStatistics_t st; x.AttachBuffer(bu, d, 1, &st); }
USE { CChunkAdapterGenDC x(nm); (void)x; }
USE { GVCP_CHUNK_TRAILER a; U3V_CHUNK_TRAILER bb; (void)a; (void)bb; }
USE { CEventAdapterGEV x(nm); GVCP_EVENT_REQUEST_EXTENDED_ID q; x.DeliverEventMessage(&q); GVCP_EVENTDATA_REQUEST_EXTENDED_ID w; x.DeliverEventMessage(&w); }
USE { int z = TAG_EVENT_CMD + TAG_EVENTDATA_CMD + COMMAND_MAGIC; (void)z; }
USE { U3V_EVENT_MESSAGE q; q.CommandHeader.Prefix = U3V_EVENT_PREFIX; q.EventData.Reserved = 0; uint16_t z = GENCP_EVENT_CMD_ID; (void)z; }
USE { CEventAdapter1394 x(nm); CEventAdapterCL y(nm); }
USE { AutoLock l(nm->GetLock()); }
USE { CEnumEntryPtr x = n; x->GetSymbolic(); x->GetNumericValue(); x->IsSelfClearing(); x->GetValue(); x->GetNode(); x->GetAccessMode(); }
USE { bool z = b->GetValue(); z = (*b)(); *b = false; (void)z; }
USE { gcstring q = GetInterfaceName(n); }
USE { switch (n->GetPrincipalInterfaceType()) { case intfIInteger: case intfIFloat: case intfIEnumeration: case intfICommand: case intfIBoolean: case intfIString: case intfIRegister: case intfICategory: case intfIEnumEntry: case intfIPort: case intfIValue: case intfIBase: break; } }
USE { EGenApiSchemaVersion q = GenApi::_Undefined; (void)q; }
USE { IDevFileStream x; x.open(nm, "UserFile", std::ios::in | std::ios::binary); x.close(); }
USE { ODevFileStream x(nm, "UserFile"); x << "a"; x.fail(); }
USE { GenICam_streamsize q = 0; (void)q; }
USE { (void)sizeof(CRegisterSetHelper); }
USE { int64_t z = GC_INT64_MAX; z = GC_INT64_MIN; printf("%" FMT_I64 "d", z); }
USE { int q = INTEGRAL_CAST<int>((int64_t)5); unsigned w = INTEGRAL_CAST2<unsigned, int64_t>(5); (void)q; (void)w; }
USE { gcstring z; GetValueOfEnvironmentVariable("x", z); }
USE { int a[3]; size_t z = GC_COUNTOF(a); const char* q = PLATFORM_NAME; (void)z; (void)q; }
USE { int z = GENICAM_VERSION_MAJOR * 100 + GENICAM_VERSION_MINOR; (void)z; }
USE { NodeList_t l; nm->GetNodes(l); for (NodeList_t::const_iterator it = l.begin(); it != l.end(); ++it) (*it)->GetName(); }
USE { if (IsWritable(nm->GetNode("W"))) {} if (IsReadable(*i)) {} }
USE { CValuePtr x = n; x->ToString(true, true); x->FromString("1", false); x->IsValueCacheValid(); }
USE { int64_t z = (*i)(); z = **i; *i = 3; (void)z; }
USE { CIntegerPtr x = n; CNodePtr y = n; CValuePtr z(y); x = y; }
USE { CNodePtr y; INode* z = y; (void)z; }
USE { EAccessMode z = GenApi::RW; z = GenApi::NI; (void)z; }
USE { GenICam_3_4::gcstring a; GenApi_3_4::INode* q = n; (void)q; }
USE { struct Y; GENICAM_INTERFACE Z { virtual void F() = 0; }; (void)sizeof(Z); }
USE { const char* q = GENICAM_VERSION_MAJOR_STR "." GENICAM_VERSION_MINOR_STR GENICAM_CACHE_VERSION; (void)q; }
USE { const char* q = DLL_NAME("GenApi"); (void)q; }
USE { ::Version_t a = {1, 2, 3}; (void)a; float64_t d = 0; (void)d; }
USE { GC_ERROR q = GC_ERR_TIMEOUT; bool z = GC_IS_ERROR(q); (void)z; }
USE { gcarray<uint8_t> a(4); a[0] = 1; uint8_t* q = *a; (void)q; }
USE { DECLARE_EXCEPTION(MyException); throw MyException("x", __FILE__, __LINE__); }
USE { throw ExceptionReporter<RuntimeException>(__FILE__, __LINE__).Report("a %d", 1); }
USE { throw AccessException("x", __FILE__, __LINE__, "SetValue", "Gain", "AccessException"); }
USE { ::operator<<(std::cout, n->GetName()); }
USE { std::stringstream q; gcstring a; q << a; q >> a; getline(q, a); }
USE { struct X : gcstring { size_t length() const override { return 0; } }; X x; (void)x; }
USE { gcstring_vector l(2); gcstring_vector::iterator it = l.begin() + 1; l.insert(it, "a"); l.erase(l.begin()); l.insert((size_t)0, "b"); std::vector<gcstring> o(l.begin(), l.end()); }
USE { gcstring_vector l; std::sort(l.begin(), l.end()); }
USE { struct D { int a; }; LockableObject<D> x; LockableObject<D>::Lock k(x); x.a = 1; }
USE { GenApi::CLock l; GenICam::CLock k; GenApi::AutoLock a(l); CLockEx e2; }
USE { NodeList_t l; l.push_back(n); l.insert((size_t)0, n); l.erase((size_t)0); l.resize(2); INode* q = l.at(0); (void)q; }
USE { int64_autovector_t l(3), k(l); k[0] = 1; }
USE { struct X : CIntegerRefT<IInteger> {}; X x; IReference* q = &x; q->SetReference(n); x.GetFloatAlias(); CValueRef w; CFloatRef y; CEnumEntryRef z; CSelectorRef u; CPortRecorderRef k; CPortStackedRef j; CBaseRef h; }
USE { struct P { CIntegerRef Width; enum EE { A }; CEnumerationTRef<EE> Mode; virtual void _Initialize(INodeMap* q) { Width.SetReference(q->GetNode("Width")); Mode.SetReference(q->GetNode("Mode")); Mode.SetNumEnums(1); Mode.SetEnumReference(A, "A"); } virtual ~P() {} }; CNodeMapRefT<P> x("Camera"); x._LoadXMLFromFile("a"); x.Width.SetValue(1); x.Mode.SetValue(P::A); x.Mode = "A"; }
USE { CNodeMapRef x; if (!x._Ptr) x = nm; CNodeMapRef y(x); y = x; }
USE { CastToIDestroy(CNodeMapFactory(gcstring("<x/>")).CreateNodeMap())->Destroy(); }
USE { CNodeMapFactory x(gcstring("<x/>")), y; x.AddInjectionData(y); x.Preprocess(); x.IsPreprocessed(); x.ExtractSubtree("A", true); x.ToXml(); CNodeMapFactory::ClearCache(); }
USE { CNodeWriteConcatenatorRef q(nm->NewNodeWriteConcatenator()); gcstring_vector er; nm->ConcatenatedWrite(q, false, &er); q._Add("A", 1.5); q._Add("A", true); q._Add("A", "x"); q._Clear(); CNodeWriteConcatenator* w = q.Release(); w->Destroy(); }
USE { INodeMapDyn* q = dynamic_cast<INodeMapDyn*>(nm); if (q) q->LoadXMLFromString("x"); }
USE { CNodeMapUserDataPtr x = nm; x->SetUserData(NULL); }
USE { struct X : CPortStackedImpl { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void Write(PORT_REGISTER_STACK_ENTRY*, size_t) override {} }; X x; nm->Connect(&x); x.InvalidateNode(); }
USE { struct X : IPortConstruct { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void SetPortImpl(IPort*) override {} EYesNo GetSwapEndianess() override { return No; } }; X x; (void)x; }
USE { struct X : IPersistScript { void SetInfo(const gcstring&) override {} void PersistFeature(IValue&, CSelectorSet*) override {} }; X x; (void)x; }
USE { struct X : CNodeCallback { X(INode* q) : CNodeCallback(q, cbPostInsideLock) {} void operator()(ECallbackType) const override {} void Destroy() override { delete this; } }; n->RegisterCallback(new X(n)); }
USE { struct X : CEventAdapter { void DeliverMessage(const uint8_t[], uint32_t) override { for (size_t k = 0; k < m_ppEventPorts->size(); ++k) (*m_ppEventPorts)[k]->CheckEventID(1); } }; X x; x.AttachNodeMap(nm); }
USE { CChunkPortPtr x = n; gcstring q = x->GetChunkID(); EYesNo z = x->CacheChunkData(); (void)z; int64_t w = CHUNK_BASE_ADDRESS_REGISTER; (void)w; }
USE { CChunkAdapterDcam x(nm); GUID g; SET_GUID(g, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11); DCAM_CHUNK_TRAILER q; (void)q; uint8_t bu[24]; x.HasCRC(bu, 24); }
USE { CEventAdapterCL x(nm); CL_EVENT_MESSAGE q; q.CommandHeader.Preamble = CL_EVENT_PREAMBLE; q.EventData.EventId = 1; x.DeliverEventData(&q.EventData, 12); }
USE { CFeatureBag x; gcstring_vector l; x.StoreToBag(nm, -1, &l); x.SetBagName("a"); gcstring q = x.GetBagName(); bool z = x == x; (void)z; std::cout << x; }
USE { CFeatureBagger x; std::stringstream q; q << x; q >> x; for (CFeatureBagger::const_iterator it = x.begin(); it != x.end(); ++it) it->GetBagName(); x.at(0); x.SetInfo("a"); const char* w = GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER; (void)w; }
USE { CSelectorSet x(v); CSelectorState q; x.GetState(q); if (q.SetFirst()) q.GetNodeName(); q.AddSelector(*v); q.RestoreState(nm); }
USE { gcstring q; TrimSpace(q, std::cin); }
USE { EAccessMode z; EAccessModeClass::FromString("RW", &z); gcstring q = EVisibilityClass::ToString(Guru); EYesNo y = Yes; EYesNoClass::ToString(q, &y); ESignClass::ToString(Signed); EGenApiSchemaVersionClass::ToString(v1_1); }
USE { CIntegerValueArray x(i, i); if (x.IsValid()) x.GetAllValues(); std::vector<double> q; CFloatValueArray(f, i).GetAllValues(q); CBooleanValueArray::CheckAdvertisedCompatibility(b, i); }
USE { Counter x; ++x; x--; if (x.IsZero()) {} unsigned q = x; (void)q; }
USE { FileProtocolAdapter x; IFileProtocolAdapter* q = &x; q->attach(nm); GenICam_streamsize z = q->getBufSize("a", std::ios::in); (void)z; }
USE { CIntegerPtr x = n; if (IsReadable(x) || IsWritable(x) || IsImplemented(x) || IsAvailable(x)) {} }
USE { bool z = CNodePtr(n); (void)z; }
USE { EGenApiSchemaVersion q = v1_0; (void)q; ERepresentation z = _UndefindedRepresentation; (void)z; ESign w = _UndefinedSign; (void)w; }
USE { struct X { GENICAM_DEPRECATED(void F()); }; (void)sizeof(X); }
USE { struct X { void F(INode*) {} } x; Member_NodeCallback<X, void (X::*)(INode*)>::PMEMBERFUNC q = &X::F; Register(n, x, q); }
USE { struct X : CChunkAdapterU3V { X(INodeMap* q) : CChunkAdapterU3V(q) {} bool F() { return m_MaxChunkCacheSize < 0 && m_ppChunkPorts->empty(); } } x(nm); x.F(); }
USE { struct X : CEventAdapterGeneric { void DeliverMessage(const uint8_t[], uint32_t) override {} void DeliverMessage(const uint8_t[], uint32_t, const gcstring&) override {} void DeliverMessage(const uint8_t[], uint32_t, uint64_t) override {} } x; (void)x; }
USE { IDevFileStream::filebuf_type q; q.open(nm, "UserFile"); ODevFileStream::filebuf_type w; w.open(nm, "UserFile", std::ios::out); IDevFileStream::istream_type* a = nullptr; ODevFileStream::ostream_type* k = nullptr; IDevFileStream::ios_type* z = nullptr; (void)a; (void)k; (void)z; }
USE { CIntegerPtr x; if (x == NULL || NULL != x || x == 0 || x == nullptr || nullptr != x || x != CIntegerPtr(n)) x = NULL; bool z = x; (void)z; }
USE { CIntegerPtr(n)->SetValue(5); CCommandPtr(n)->Execute(); (*CEnumerationPtr(n)) = "x"; IInteger* q = CIntegerPtr(n); std::vector<CIntegerPtr> l(2, n); l[0] = dynamic_cast<IInteger*>(n); l[1] = v; (void)q; }
USE { CallbackHandleType h = Register(n, [](INode* q) { std::cout << q->GetName(); }); Deregister(h); }
USE { using namespace std; stringstream q; gcstring a; q << a << hex << 1; getline(q, a); string w = a.c_str(); swap(a, a); CNodePtr x = nm->GetNode(w.c_str()); shared_ptr<CNodeMapRef> k = make_shared<CNodeMapRef>("Device"); }
USE { class X : public IPort { public: virtual void Read(void*, int64_t, int64_t) {} virtual void Write(const void*, int64_t, int64_t) {} virtual EAccessMode GetAccessMode() const { return RW; } virtual EInterfaceType GetPrincipalInterfaceType() const { return intfIPort; } } x; m._Connect(static_cast<IPort*>(&x)); m._Connect((IPort*)NULL, "Device"); }
