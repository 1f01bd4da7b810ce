// The line editor of the till: the arithmetic of a changed line in both
// price modes, what reaches the sale's tables, the employees' panel, the
// pad's filter, and a resumed sale whose customer was deleted.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaLupa : public prueba::CajaTest {
protected:
    // A sale of `unidades` of Colonia (10 at 21 %), and the editor opened on its line.
    frmCaja& VentaConLupa(int unidades) {
        Articulo(5, "8410001", "Colonia", "10");
        frmCaja& c = Abrir();
        for (int i = 0; i < unidades; ++i) Escanear("8410001");
        ClicEnLinea(c, 1);
        return c;
    }
    void ClicEnLinea(frmCaja& c, long fila, long columna = 0) {
        anfitrion.Accion([&] { c.FGCaja.ClicEnCelda(fila, columna, false); });
    }
    // An entry touched, a value typed on the pad's entry, and Enter.
    void Cambiar(frmCaja& c, TextBox& entrada, const std::string& valor) {
        Clic(entrada);
        Teclear(c.txt_ValorLupa, valor);
        Intro(c.txt_ValorLupa);
    }
    std::vector<std::string> Filas(const std::string& sql) { return prueba::FilasDe(sql, cn); }
    std::string Linea(const std::string& campos) {
        return Texto(Valor("select " + campos + " from detalle_factura_temp where orden = 1"));
    }
};

TEST_P(CajaLupa, CambiosDeLinea_ConImpuestoIncluido) {
    struct Paso {
        TextBox frmCaja::*entrada;
        const char* valor;
    };
    struct Caso {
        const char* que;
        std::vector<Paso> pasos;
        const char* entradas;  // price, discount and total before applying
        const char* grid;      // price, discount per unit, units, total, line discount
        const char* linea;     // stored amount, tax, discount, unit price
    } casos[] = {
        {"mismo precio", {{&frmCaja::txt_PrecioLupa, "10"}}, "10|0,0000|20,00", "10|0|2|20,00|0", "20|3,47|0|10"},
        {"cantidad", {{&frmCaja::txt_CantLupa, "3"}}, "10|0,0000|30,00", "10|0|3|30,00|0", "30|5,21|0|10"},
        {"descuento", {{&frmCaja::txt_DescLupa, "10"}}, "10|10|18,00", "10|1|2|18,00|2", "18|3,12|2|10"},
        // The discount per unit is reckoned on the price at opening, the
        // line's discount on the new one.
        {"descuento y precio subido", {{&frmCaja::txt_DescLupa, "10"}, {&frmCaja::txt_PrecioLupa, "12"}},
         "12|10|21,60", "12|1|2|21,60|2,4", "21,6|3,82|2,4|12"},
        {"descuento con decimales", {{&frmCaja::txt_DescLupa, "12,5"}}, "10|12,5|17,50", "10|1,25|2|17,50|2,5",
         "17,5|3,04|2,5|10"},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        Ejecutar({"delete from detalle_factura_temp", "delete from cabecera_factura_temp", "delete from productos"});
        frmCaja& c = VentaConLupa(2);
        ASSERT_TRUE(c.fr_Lupa.visible);
        EXPECT_FALSE(c.fr_hijo.enabled);
        for (const Paso& p : k.pasos) Cambiar(c, c.*p.entrada, p.valor);
        EXPECT_EQ(c.txt_PrecioLupa.Text() + "|" + c.txt_DescLupa.Text() + "|" + c.txt_TotalLupa.Text(), k.entradas);
        EXPECT_FALSE(c.fr_LupaMovil.visible);

        Clic(c.cmd_AceptarLupa);
        EXPECT_FALSE(c.fr_Lupa.visible);
        EXPECT_TRUE(c.fr_hijo.enabled);
        std::string grid;
        for (long col : {1, 5, 9, 10, 16}) grid += (grid.empty() ? "" : "|") + c.FGCaja.TextMatrix(1, col);
        EXPECT_EQ(grid, k.grid);
        EXPECT_EQ(c.CajaText_Pago.Text(), c.FGCaja.TextMatrix(1, 10));
        const std::string linea = k.linea;
        EXPECT_EQ(Filas("select precio,impuesto,descuento,precio_unit from detalle_factura_temp"),
                  std::vector<std::string>{linea});
        EXPECT_EQ(Filas("select total,impuesto,descuento from cabecera_factura_temp"),
                  std::vector<std::string>{linea.substr(0, linea.rfind('|'))});
        c.Unload();
    }
    EXPECT_TRUE(Avisos().empty());
}

// Without tax in the prices the tax goes on the catalogue price taken out of
// a tax it never carried, the discount left out, and the line is found by
// its code alone.
TEST_P(CajaLupa, PrecioRebajado_SinImpuestoIncluido) {
    sesion().opciones.iva = false;
    frmCaja& c = VentaConLupa(2);
    EXPECT_EQ(c.txt_PrecioLupa.Text(), "12,1");
    Cambiar(c, c.txt_PrecioLupa, "9,68");
    EXPECT_EQ(c.txt_DescLupa.Text(), "20,0000");
    EXPECT_EQ(c.txt_TotalLupa.Text(), "19,36");
    Clic(c.cmd_AceptarLupa);
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 5), "2,42");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 10), "19,36");
    // Amount, tax (20 / 1,21 * 21 %), discount and unit price.
    EXPECT_EQ(Filas("select precio,impuesto,descuento,precio_unit from detalle_factura_temp"),
              std::vector<std::string>{"19,36|3,47|0|10"});
    EXPECT_EQ(c.CajaText_Pago.Text(), "19,36");
}

TEST_P(CajaLupa, Seleccion_PintaLaFilaYColocaElEditor) {
    Articulo(5, "8410001", "Colonia", "10");
    Articulo(6, "8410002", "Jabon", "2");
    frmCaja& c = Abrir();
    Escanear("8410001");
    Escanear("8410002");
    ClicEnLinea(c, 1);
    const long blanco = 0xFFFFFF;
    EXPECT_EQ(c.FGCaja.CellBackColor(1, 0), blanco);
    EXPECT_EQ(c.FGCaja.CellBackColor(1, 11), blanco);
    EXPECT_NE(c.FGCaja.CellBackColor(1, 12), blanco);
    const double arribaPrimera = c.fr_Lupa.top;
    Clic(c.cmd_SalirLupa);
    ClicEnLinea(c, 2);
    // The row selected before goes back to the grid's colour.
    EXPECT_NE(c.FGCaja.CellBackColor(1, 0), blanco);
    EXPECT_EQ(c.FGCaja.CellBackColor(2, 0), blanco);
    EXPECT_GT(c.fr_Lupa.top, arribaPrimera);
    EXPECT_EQ(c.txt_NomLupa.Text(), "Jabon");
    Clic(c.cmd_SalirLupa);

    // The heading and an empty row open nothing.
    ClicEnLinea(c, 0);
    EXPECT_FALSE(c.fr_Lupa.visible);
    c.cmdNuevaVenta_Click();
    ClicEnLinea(c, 1);
    EXPECT_FALSE(c.fr_Lupa.visible);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaLupa, PanelDeEmpleados_AnadeIniciales) {
    sesion().PanelEmpleados = {{"", "8", "", "  Ana Gil Sanz ", "", "8"}, {"", "9", "", "Luis", "", "9"}};
    frmCaja& c = VentaConLupa(1);
    EXPECT_EQ(c.txt_EmpLupa.Text(), "Juan  P. L.");
    Clic(c.txt_EmpLupa);
    EXPECT_TRUE(c.fr_LupaMovil.visible);
    EXPECT_TRUE(c.fr_EmpLupa.visible);
    EXPECT_FALSE(c.fr_NuevoValor.visible);
    Pulsar(c.PanelEmpLupa, 0);
    EXPECT_FALSE(c.fr_LupaMovil.visible);
    EXPECT_EQ(c.txt_EmpLupa.Text(), "Juan  P. L./A. G.");
    EXPECT_EQ(c.lblCodEmp.caption, "8");
    Clic(c.txt_EmpLupa);
    Pulsar(c.PanelEmpLupa, 1);
    EXPECT_EQ(c.txt_EmpLupa.Text(), "Juan  P. L./A. G./L. ");
    EXPECT_EQ(c.lblCodEmp.caption, "9");
    Clic(c.cmd_AceptarLupa);
    // Several names on one line: it belongs to no one by name.
    EXPECT_EQ(Linea("codempleado"), "9");
    EXPECT_EQ(Linea("nombreempleado"), "");
    ClicEnLinea(c, 1, 2);
    EXPECT_TRUE(c.lblEmpleadosLupa.visible);
    EXPECT_EQ(c.lblEmpleadosLupa.caption, "Juan  P. L.\r\nA. G.\r\nL.");
}

TEST_P(CajaLupa, Teclado_FiltroYValorVacio) {
    frmCaja& c = VentaConLupa(1);
    Clic(c.txt_CantLupa);
    EXPECT_EQ(c.txt_ValorLupa.Text(), "1");
    EXPECT_EQ(c.txt_ValorLupa.selLength, 1);
    // The pad's keys replace the selected text; letters are refused.
    Clic(c.btnNumerico_Lupa[4]);
    Teclear(c.txt_ValorLupa, "x,5");
    EXPECT_EQ(c.txt_ValorLupa.Text(), "4,5");
    Clic(c.cmd_AceptarImporte);
    EXPECT_EQ(c.txt_CantLupa.Text(), "4,5");
    EXPECT_EQ(c.txt_TotalLupa.Text(), "45,00");
    // An empty value changes nothing, but folds the pad.
    Clic(c.txt_DescLupa);
    c.txt_ValorLupa.SetText("");
    Clic(c.cmd_AceptarImporte);
    EXPECT_EQ(c.txt_DescLupa.Text(), "0,0000");
    EXPECT_FALSE(c.fr_LupaMovil.visible);
    EXPECT_EQ(c.ActiveControl(), &c.cmd_AceptarLupa);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaLupa, MostrarVenta_ClienteBorradoYModificacion) {
    Articulo(5, "8410001", "Colonia", "10");
    Ejecutar({"insert into cabecera_factura_temp (numero,cliente,empleado,codigo_empleado,total,terminal,presupuesto)"
              " values (40,77,'Ana',8,10,'CAJA1',0)",
              "insert into clientes (codigo,nombre,apellidos) values (77,'Eva','Rios')",
              "insert into detalle_factura_temp (num_factura,codigo,producto,unidades,precio,precio_unit,descuento,"
              "impuesto,tipoimpuesto,tipo_venta,codempleado,nombreempleado,recargo,impuesto_2,codfamilia,orden)"
              " values (40,5,'Colonia',1,10,10,0,1.74,21,'P',8,'Ana',0,0,0,1)"});
    frmCaja& c = Abrir();
    c.mostrarVenta(40);
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(Avisos()[0], "MENSAJE [Mostrar venta] El cliente de esta venta (Eva Rios) ha sido eliminado para "
                           "poder continuar debe recuperar dicho cliente -> Aceptar");
    EXPECT_EQ(c.lblNumVenta.caption, "");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 0), "");

    // The same sale without a customer, modifying a closed one.
    Ejecutar({"update cabecera_factura_temp set cliente = 0",
              "insert into ventasdevolucion (numerofacturatemporal,numerofacturareal) values (40,12)"});
    c.mostrarVenta(40);
    EXPECT_EQ(c.lblNumVenta.caption, "40");
    EXPECT_EQ(c.txtNomCliente.Text(), "Cliente Generico");
    EXPECT_EQ(c.CajaText_Pago.Text(), "10,00");
    EXPECT_TRUE(c.lblModificacion.visible);
    EXPECT_EQ(c.lblModificacion.caption, "Modificacion de Venta");
    EXPECT_TRUE(c.tmrMovModificacion.Enabled());
    EXPECT_TRUE(c.cmd_DescImporte.visible);
    EXPECT_EQ(Avisos().size(), 1u);
}

TPV_EN_CADA_MOTOR(CajaLupa);

}  // namespace
}  // namespace tpv
