#pragma once
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "closing/cierre.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/reloj.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/cajon.hpp"
#include "printing/page_device.hpp"
#include "printing/recording_printer.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv::prueba {

// The rows of a query, each as its columns' texts joined by "|".
inline std::vector<std::string> FilasDe(const std::string& sql, Connection& cn) {
    std::vector<std::string> filas;
    Recordset rs;
    rs.Open(sql, cn);
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string fila;
        for (int i = 0; i < rs.FieldCount(); ++i) fila += (i ? "|" : "") + Texto(rs.Fields(i).Value());
        filas.push_back(fila);
    }
    return filas;
}

// A ticket printer "TICKETS" that keeps its paper, as the only printer.
inline RecordingPrinter* InstalarTickets() {
    auto tickets = std::make_unique<RecordingPrinter>("TICKETS");
    RecordingPrinter* r = tickets.get();
    std::vector<std::unique_ptr<PageDevice>> lista;
    lista.push_back(std::move(tickets));
    InstallPrinters(std::move(lista));
    return r;
}

// Whether a line of a printed document holds `texto`.
inline bool EnPapel(const RecordingPrinter::Document& documento, const std::string& texto) {
    const auto& papel = documento.paper;
    return std::any_of(papel.begin(), papel.end(),
                       [&](const std::string& l) { return l.find(texto) != std::string::npos; });
}

// The boxes shown were `cuantas` warnings of a printer that can't be reached.
inline void AvisosDeImpresora(const std::vector<CajaMensaje>& cajas, std::size_t cuantas) {
    ASSERT_EQ(cajas.size(), cuantas);
    for (const CajaMensaje& c : cajas) {
        EXPECT_EQ(c.titulo, "Impresion");
        EXPECT_EQ(c.texto, "Compruebe la conexion con su impresora, si la impresora esta conectada a otro equipo "
                           "compruebe el estado de la conexion.");
        EXPECT_EQ(c.estilo & vbCritical, vbCritical);
    }
}

// A perfumery with its session open, the clock on 15/11/2026 at 10:30, a
// ticket printer "TICKETS" that records its paper, a drawer on "COM1" whose
// bytes are kept, the invoice counter at 100 and open sales written straight
// into the temporary tables.
class CierreTest : public SesionTest {
protected:
    void SetUp() override {
        SesionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Reloj(10, 30);
        tickets_ = InstalarTickets();
        FijarEscritorPuerto([this](const std::string&, const std::vector<std::uint8_t>&) { ++cajones; });
        Sesion& s = sesion();
        s.TerminalActual = s.IdentificadorTerminal = "CAJA1";
        s.Sector = "PERFUMERIA";
        s.opciones.NumDecimales = 2;
        FijarNumDecimales(2);
        s.opciones.NumCopiasFactura = 1;
        s.TicketConfigurable = true;
        s.ImpresoraTickets = "TICKETS";
        s.PuertoImpresora = "COM1";
        s.SecuenciaApertura = "27|112|0|25|250";
        Ejecutar({"insert into relaciones_fijas (indice,daton) values ('Factura',100)",
                  "insert into relaciones_fijas (indice,daton) values ('Abonos',7)",
                  "insert into relaciones_fijas (indice,daton) values ('PagosCuenta',3)",
                  "insert into opciones (nombre,NumDecimales,iva) values ('Perfumería Olmo',2,True)",
                  "insert into formapago (codigo,nombre) values (1,'Contado')",
                  "insert into confticket (EnNegrita,nomEmpresa,nomTicket,totalfinal) values (0,'#CPerfumería Olmo','Ticket: ','TOTAL')"});
    }

    void TearDown() override {
        FijarEscritorPuerto(nullptr);
        ResetPrinters();
        reloj::Soltar();
        SesionTest::TearDown();
    }

    static void Reloj(int hora, int minuto, int dia = 15) {
        reloj::Fijar(DateTime{DateSerial(2026, 11, dia).serial + TimeSerial(hora, minuto, 0).serial});
    }

    static void Escribir(const std::string& tabla, const std::string& campos) {
        RecordWriter::Instancia().Insertar(sesion().Conexion, tabla, campos, "", false);
    }

    void Producto(int codigo, const std::string& nombre, double stock, double coste) {
        Escribir("productos", "Codigo=" + std::to_string(codigo) + "|nombre=" + nombre + "|stock=" + CStr(stock) +
                                  "|salida=0|coste=" + CStr(coste) + "|");
    }

    // An open sale of employee "Ana" (3), opened on 15/11/2026 at 09:05.
    void Venta(int numero, const std::string& total, int cliente = 0, const std::string& extra = "") {
        Escribir("cabecera_factura_temp", "Numero=" + std::to_string(numero) +
                                              "|Fecha=15/11/2026|Hora=09:05:00|Cliente=" + std::to_string(cliente) +
                                              "|Empleado=Ana|Codigo_Empleado=3|ImpuestoIncluido=-1|terminal=CAJA1|"
                                              "total=" + total + "|impuesto=1,5|impuesto_2=0|recargo=0|cierre=0|" +
                                              extra);
    }

    void Linea(int numero, int codigo, const std::string& producto, const std::string& unidades,
               const std::string& precio, const std::string& tipo = "P") {
        Escribir("detalle_factura_temp",
                 "Num_Factura=" + std::to_string(numero) + "|Codigo=" + std::to_string(codigo) + "|Producto=" +
                     producto + "|Unidades=" + unidades + "|Precio=" + precio + "|Descuento=0|recargo=0|Precio_Unit=" +
                     precio + "|Impuesto=1,5|TipoImpuesto=21|impuesto_2=0|tipoimpuesto_2=0|codEmpleado=3|"
                     "NombreEmpleado=Ana|tipo_Venta=" + tipo + "|CodFamilia=4|orden=1|");
    }

    DatosCierre Datos(int numeroVenta, const std::string& formaPago = "1") {
        DatosCierre d;
        d.numeroVenta = numeroVenta;
        d.imprimir = true;
        d.entrega = "50,00";
        d.devolucion = "0,00";
        d.formaPago = formaPago;
        return d;
    }

    void Cerrar(DatosCierre& d, DateTime fecha1 = Date()) {
        caja.Fecha1 = fecha1;
        CerrarVenta(d, caja);
    }

    std::vector<std::string> Filas(const std::string& sql) { return FilasDe(sql, cn); }

    long Cuenta(const std::string& tabla) { return CLng(Valor("select count(*) from " + tabla)); }

    RecordingPrinter* tickets_ = nullptr;
    int cajones = 0;
    bool modoAbono = false;
    std::string ultFactura;
    CajaEnCierre caja{modoAbono, "", Date(), "", [this](const std::string& t) { ultFactura = t; }};
};

}  // namespace tpv::prueba
